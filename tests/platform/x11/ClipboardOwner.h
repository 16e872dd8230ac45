#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <atomic>
#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/x11/Connection.h"

namespace tavin::test {

using Targets = std::vector<std::pair<std::string, QByteArray>>;

struct OwnerManners {
  std::set<std::string> silentOn = {};      // Targets that get no answer.
  std::set<std::string> refuses = {};       // Targets that are listed but refused.
  std::string changesOn = {};               // Copies something else when this is first asked for,
  Targets changesTo = {};                   // namely this, before it has answered.
  std::string diesOn = {};                  // Ends when this is asked for.
  std::chrono::milliseconds pieceTakes{0};  // Each piece of large data.
  std::string pieceType = {};               // Of large data, if not its target's.
  bool knowsOnlyText = false;               // Answers its first text, whatever it is asked for.
  std::uint32_t listsMore = 0;              // So many targets that nobody has heard of.
  std::string selection = "CLIPBOARD";
};

// A program that has copied something, with the manners or the lack of them that a test asks for.
// Runs on a thread with a connection of its own. Large data goes by INCR.
class ClipboardOwner {
 public:
  // Owns the selection when the constructor returns.
  explicit ClipboardOwner(Targets targets, OwnerManners manners = {});
  ~ClipboardOwner();
  ClipboardOwner(const ClipboardOwner&) = delete;
  ClipboardOwner& operator=(const ClipboardOwner&) = delete;

  xcb_window_t window() const { return window_; }
  std::vector<std::string> requests() const;  // After end().
  void end();

 private:
  void claim();
  void run();
  bool answer(const xcb_selection_request_event_t& request);
  bool put(const xcb_selection_request_event_t& request, const std::string& name);
  void sendNextPiece(const xcb_property_notify_event_t& taken);

  std::unique_ptr<x11::Connection> connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  Targets targets_;
  OwnerManners manners_;
  struct Sending {
    xcb_window_t requestor = XCB_WINDOW_NONE;
    xcb_atom_t property = XCB_ATOM_NONE, type = XCB_ATOM_NONE;
    QByteArray bytes;
    qsizetype sent = 0;
  };
  std::vector<Sending> sending_;
  std::vector<std::string> requests_;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

// Bytes that look like a picture and cannot be guessed, always the same for one size.
QByteArray picture(qsizetype size);
// What another program gets for a target of the clipboard; through xclip.
QByteArray pasted(const QString& target);
// The names that the clipboard's owner lists, in order.
QStringList pastedTargets();

}  // namespace tavin::test
