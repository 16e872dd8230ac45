#pragma once

#include <dbus/dbus.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <memory>
#include <string>

namespace tavin::fuzz {

struct MessageUnref {
  void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};
using Message = std::unique_ptr<DBusMessage, MessageUnref>;

// A type, or several in a row: mostly the `wanted` one, else another that D-Bus has.
std::string anySignature(FuzzedDataProvider& input, const std::string& wanted);

// Appends values of these types, made of the input.
void appendAny(DBusMessage& message, const std::string& signature, FuzzedDataProvider& input);

}  // namespace tavin::fuzz
