#include "bus/AnyMessage.h"

#include <QString>
#include <array>

namespace tavin::fuzz {
namespace {

constexpr std::size_t longestText = 64;
constexpr int deepest = 6;  // Variants in variants.

// What programs of a desktop send each other, and what looks like it.
const std::array<std::string, 29> commonSignatures{
    "",           "s",     "i",      "u",         "b",      "v",     "as",  "ai", "au",   "(so)",
    "a(so)",      "a{sv}", "a{ss}",  "a(sa{sv})", "a(ai)",  "(ai)",  "o",   "d",  "t",    "a(isvu)",
    "(ia{sv}av)", "ay",    "ua{sv}", "oua{sv}",   "ua{ss}", "u(so)", "uas", "uv", "a(ss)"};
const std::array<std::string, 6> paths{"/",
                                       "/org/a11y/atspi/null",
                                       "/org/a11y/atspi/accessible/root",
                                       "/org/freedesktop/portal/desktop",
                                       "/a",
                                       "/a/b_1"};

// Texts that mean something somewhere.
const std::array<std::string, 24> words{"",
                                        "label",
                                        "enabled",
                                        "visible",
                                        "clicked",
                                        "opened",
                                        "closed",
                                        "speak",
                                        "pause",
                                        "menu",
                                        "version",
                                        "devices",
                                        "session_handle",
                                        "/a/b_1",
                                        "activation-token",
                                        ":1.66",
                                        "restore_token",
                                        "shortcuts",
                                        "IsEnabled",
                                        "trigger_description",
                                        "a\u00e9\U0001f600",
                                        "\ufffc",
                                        "AvailableDeviceTypes",
                                        "speak-selection-alt-escape"};

std::string anyText(FuzzedDataProvider& input) {
  if (input.ConsumeBool())
    return input.PickValueInArray(words);
  const std::string bytes = input.ConsumeRandomLengthString(longestText);
  return QString::fromStdString(bytes).remove(QChar(u'\0')).toStdString();
}

std::string anySingleType(FuzzedDataProvider& input) {
  std::string type = input.PickValueInArray(commonSignatures);
  return dbus_signature_validate_single(type.c_str(), nullptr) ? type : "s";
}

class Appender {
 public:
  explicit Appender(FuzzedDataProvider& input) : input_(input) {}

  void append(DBusMessageIter& to, const std::string& signature, int depth) {
    if (signature.empty())
      return;
    DBusSignatureIter type;
    dbus_signature_iter_init(&type, signature.c_str());
    do appendOne(to, type, depth);
    while (dbus_signature_iter_next(&type));
  }

 private:
  void appendOne(DBusMessageIter& to, DBusSignatureIter& type, int depth) {
    switch (dbus_signature_iter_get_current_type(&type)) {
      case DBUS_TYPE_ARRAY:
        return appendArray(to, type, depth);
      case DBUS_TYPE_STRUCT:
      case DBUS_TYPE_DICT_ENTRY:
        return appendFields(to, type, depth);
      case DBUS_TYPE_VARIANT: {
        const std::string inner = depth < deepest ? anySingleType(input_) : "s";
        DBusMessageIter value;
        dbus_message_iter_open_container(&to, DBUS_TYPE_VARIANT, inner.c_str(), &value);
        append(value, inner, depth + 1);
        dbus_message_iter_close_container(&to, &value);
        return;
      }
      default:
        return appendBasic(to, dbus_signature_iter_get_current_type(&type));
    }
  }

  void appendArray(DBusMessageIter& to, DBusSignatureIter& type, int depth) {
    DBusSignatureIter element;
    dbus_signature_iter_recurse(&type, &element);
    char* const signature = dbus_signature_iter_get_signature(&element);
    DBusMessageIter values;
    dbus_message_iter_open_container(&to, DBUS_TYPE_ARRAY, signature, &values);
    for (int left = input_.ConsumeIntegralInRange(0, 4); left > 0; --left)
      appendOne(values, element, depth + 1);
    dbus_message_iter_close_container(&to, &values);
    dbus_free(signature);
  }

  void appendFields(DBusMessageIter& to, DBusSignatureIter& type, int depth) {
    DBusSignatureIter field;
    dbus_signature_iter_recurse(&type, &field);
    DBusMessageIter values;
    dbus_message_iter_open_container(&to, dbus_signature_iter_get_current_type(&type), nullptr,
                                     &values);
    do appendOne(values, field, depth + 1);
    while (dbus_signature_iter_next(&field));
    dbus_message_iter_close_container(&to, &values);
  }

  void appendBasic(DBusMessageIter& to, int type) {
    std::string text;
    if (type == DBUS_TYPE_STRING)
      text = anyText(input_);
    else if (type == DBUS_TYPE_OBJECT_PATH)
      text = input_.PickValueInArray(paths);
    else if (type == DBUS_TYPE_SIGNATURE)
      text = input_.PickValueInArray(commonSignatures);
    else
      return appendNumber(to, type);
    const char* const begin = text.c_str();
    dbus_message_iter_append_basic(&to, type, &begin);
  }

  // Small numbers are indices and flags; large ones are overflows.
  void appendNumber(DBusMessageIter& to, int type) {
    DBusBasicValue value{};
    value.i64 = input_.ConsumeBool() ? input_.ConsumeIntegralInRange<std::int64_t>(-2, 6)
                                     : input_.ConsumeIntegral<std::int64_t>();
    if (type == DBUS_TYPE_BOOLEAN)
      value.bool_val = input_.ConsumeBool();
    if (type == DBUS_TYPE_DOUBLE)
      value.dbl = input_.ConsumeFloatingPoint<double>();
    dbus_message_iter_append_basic(&to, type, &value);
  }

  FuzzedDataProvider& input_;
};

}  // namespace

std::string anySignature(FuzzedDataProvider& input, const std::string& wanted) {
  return input.ConsumeIntegralInRange(0, 7) != 0 ? wanted
                                                 : input.PickValueInArray(commonSignatures);
}

void appendAny(DBusMessage& message, const std::string& signature, FuzzedDataProvider& input) {
  DBusMessageIter to;
  dbus_message_iter_init_append(&message, &to);
  Appender(input).append(to, signature, 0);
}

}  // namespace tavin::fuzz
