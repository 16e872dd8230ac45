#pragma once

#include <functional>

namespace tavin {

// What other programs of the session may ask for over the session bus. Called on the main thread.
struct RemoteActions {
  std::function<void()> activate = {};     // Show the menu.
  std::function<void()> speakOrStop = {};  // What the speak shortcut does.
  std::function<void()> togglePause = {};  // What the pause shortcut does.
  std::function<void()> stop = {};
  // In the text that is being read; where there is none they do nothing.
  std::function<void()> nextSentence = {};
  std::function<void()> previousSentence = {};
  std::function<void()> nextParagraph = {};
  std::function<void()> previousParagraph = {};
  std::function<void()> repeatSentence = {};
  std::function<void()> faster = {};
  std::function<void()> slower = {};
};

// The program's presence on the session bus. Main thread only.
class RemoteControl {
 public:
  virtual ~RemoteControl() = default;
  // Requests that came earlier are carried out now.
  virtual void serve(RemoteActions actions) = 0;
};

}  // namespace tavin
