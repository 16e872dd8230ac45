// Owns the clipboard with a text and a private type, of as many bytes as the argument says, until
// it is ended; prints "owned". With "silent" or "dies" as the second argument it never gives the
// private type, or ends while it gives it; with "silent text", it never gives the text.
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "platform/wayland/ClipboardOwner.h"

int main(int argc, char** argv) {
  const std::string text = "text/plain;charset=utf-8";
  const std::string data = "application/x-tavin-test";
  const std::string how = argc > 2 ? argv[2] : "";
  tavin::test::OwnerManners manners;
  if (how == "silent text")
    manners.silentOn = {text};
  if (how == "dies")
    manners.diesOn = data;
  QByteArray bytes(argc > 1 ? std::atoi(argv[1]) : 0, Qt::Uninitialized);
  for (qsizetype i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 + (i >> 8));
  const tavin::test::ClipboardOwner owner(
      {{data, bytes}, {"text/html", "<b>copied</b>"}, {text, "copied before"}}, manners);
  std::cout << "owned" << std::endl;
  pause();
  return 0;
}
