// A program with one window for the tests to steer. Arguments: the class name and, at will, the
// window's type. Prints the window's number, then each key that reaches it as "press CODE STATE" or
// "release CODE STATE". Does what comes as lines on its input, printing "done" after each:
// "primary TEXT" selects a text, "clipboard TEXT" copies it, "grab" and "ungrab" hold the keyboard,
// "pty" opens a pseudo-terminal and "child-pty" has a child do so. Ends with its input.
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "platform/x11/Connection.h"

namespace {

using tavin::x11::Connection;
using tavin::x11::Reply;

class Program {
 public:
  explicit Program(const Connection& connection) : connection_(connection) {}

  void show(const std::string& className, const char* type);
  bool obey(const std::string& line);
  void handle(const xcb_generic_event_t& event);

 private:
  void serve(const xcb_selection_request_event_t& request);
  void say(const char* what, const xcb_key_press_event_t& key);

  const Connection& connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::string text_;
};

void Program::show(const std::string& className, const char* type) {
  xcb_connection_t* c = connection_.get();
  window_ = xcb_generate_id(c);
  const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
  xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 200, 200, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  const std::string names = className + '\0' + className + '\0';
  xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(names.size()), names.data());
  if (type) {
    const xcb_atom_t atom = connection_.atom(type);
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, window_, connection_.atom("_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, 32, 1, &atom);
  }
  xcb_map_window(c, window_);
  connection_.atom("a round trip");
  std::cout << window_ << std::endl;
}

bool openPseudoTerminal() { return posix_openpt(O_RDWR | O_NOCTTY) >= 0; }

bool startChildWithPseudoTerminal() {
  int ready[2];
  if (pipe(ready) != 0)
    return false;
  if (fork() == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const char answer = openPseudoTerminal() ? 'y' : 'n';
    if (write(ready[1], &answer, 1) == 1)
      pause();
    _exit(0);
  }
  char answer = 'n';
  return read(ready[0], &answer, 1) == 1 && answer == 'y';
}

bool Program::obey(const std::string& line) {
  xcb_connection_t* c = connection_.get();
  if (line == "pty")
    return openPseudoTerminal();
  if (line == "child-pty")
    return startChildWithPseudoTerminal();
  if (line == "grab") {
    const Reply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(c,
                                xcb_grab_keyboard(c, 0, window_, XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
  }
  if (line == "ungrab") {
    xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
  } else {
    text_ = line.substr(line.find(' ') + 1);
    const bool copies = line.rfind("clipboard", 0) == 0;
    xcb_set_selection_owner(c, window_,
                            copies ? connection_.atom("CLIPBOARD") : xcb_atom_t{XCB_ATOM_PRIMARY},
                            XCB_CURRENT_TIME);
  }
  connection_.atom("a round trip");
  return true;
}

void Program::say(const char* what, const xcb_key_press_event_t& key) {
  std::cout << what << ' ' << int{key.detail} << ' ' << key.state << std::endl;
}

void Program::handle(const xcb_generic_event_t& event) {
  const int kind = event.response_type & 0x7f;
  if (kind == XCB_KEY_PRESS)
    say("press", reinterpret_cast<const xcb_key_press_event_t&>(event));
  else if (kind == XCB_KEY_RELEASE)
    say("release", reinterpret_cast<const xcb_key_press_event_t&>(event));
  else if (kind == XCB_SELECTION_REQUEST)
    serve(reinterpret_cast<const xcb_selection_request_event_t&>(event));
}

void Program::serve(const xcb_selection_request_event_t& request) {
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                      request.target, 8, static_cast<std::uint32_t>(text_.size()), text_.data());
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = request.property;
  char event[32] = {};
  std::memcpy(event, &notice, sizeof(notice));
  xcb_send_event(connection_.get(), 0, request.requestor, 0, event);
}

}  // namespace

int main(int argc, char** argv) {
  const auto connection = Connection::open();
  if (!connection)
    return 1;
  Program program(*connection);
  program.show(argc > 1 ? argv[1] : "test", argc > 2 ? argv[2] : nullptr);
  xcb_connection_t* c = connection->get();
  while (xcb_connection_has_error(c) == 0) {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(c)}) program.handle(*event);
    xcb_flush(c);
    pollfd inputs[] = {{xcb_get_file_descriptor(c), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
    poll(inputs, 2, -1);
    if (inputs[1].revents == 0)
      continue;
    std::string line;
    if (!std::getline(std::cin, line))
      return 0;
    std::cout << (program.obey(line) ? "done" : "failed") << std::endl;
  }
  return 1;
}
