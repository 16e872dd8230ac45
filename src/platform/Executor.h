#pragma once

#include <functional>

namespace tavin {

// Somewhere that work can be handed to. Any thread may submit; the call never waits.
class Executor {
 public:
  virtual ~Executor() = default;
  virtual void async(std::function<void()> task) = 0;
};

}  // namespace tavin
