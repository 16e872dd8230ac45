#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace tavin::wayland {

// An entry in the table of what happens at an object's events: the function that libwayland calls,
// with the pointer that was given to it along with the table.
template <typename Object, typename... Arguments>
using ListenerEntry = void (*)(void*, Object*, Arguments...);

// Stands for an entry of any type: nothing happens.
struct Ignored {
  template <typename Object, typename... Arguments>
  constexpr operator ListenerEntry<Object, Arguments...>() const {
    return [](void*, Object*, Arguments...) {};
  }
};
inline constexpr Ignored ignored;

template <typename Self, typename... Arguments>
Self selfOf(void (Self::*)(Arguments...));
template <typename Self, typename... Arguments>
Self selfOf(void (*)(Self&, Arguments...));

// Stands for an entry that calls `handler`, a member function of what the pointer points to or a
// function that takes it first, with the arguments of the event, and before them with the object
// itself if `handler` takes it.
template <auto handler>
struct Calls {
  template <typename Object, typename... Arguments>
  constexpr operator ListenerEntry<Object, Arguments...>() const {
    return [](void* pointer, Object* object, Arguments... arguments) {
      auto& self = *static_cast<decltype(selfOf(handler))*>(pointer);
      if constexpr (std::is_invocable_v<decltype(handler), decltype(self), Object*, Arguments...>)
        std::invoke(handler, self, object, arguments...);
      else
        std::invoke(handler, self, arguments...);
    };
  }
};
template <auto handler>
inline constexpr Calls<handler> calls;

// A table where nothing happens at any event, those included that only later versions have.
template <typename Listener>
constexpr Listener ignoringAll() {
  return []<std::size_t... entry>(std::index_sequence<entry...>) {
    return Listener{(static_cast<void>(entry), ignored)...};
  }
  (std::make_index_sequence<sizeof(Listener) / sizeof(void (*)())>());
}

}  // namespace tavin::wayland
