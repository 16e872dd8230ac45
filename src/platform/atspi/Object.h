#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QList>
#include <QString>
#include <cstdint>
#include <vector>

namespace tavin::atspi {

// Where an accessible object is reached: its program's name on the accessibility bus and its path.
struct ObjectRef {
  QString service;
  QString path;

  bool isNull() const { return service.isEmpty() || path.isEmpty() || path.endsWith("/null"); }
  bool operator==(const ObjectRef&) const = default;
};

QDBusArgument& operator<<(QDBusArgument& argument, const ObjectRef& object);
const QDBusArgument& operator>>(const QDBusArgument& argument, ObjectRef& object);

// The roles that matter here, by their numbers in the protocol.
enum class Role : std::uint32_t {
  unknown = 0,
  dialog = 16,
  frame = 23,
  image = 27,
  label = 29,
  passwordText = 40,
  tableCell = 56,
  terminal = 60,
  text = 61,
  window = 69,
  paragraph = 73,
  application = 75,
  link = 88,
  documentText = 94,
  documentWeb = 95,
  staticText = 116,
  subscript = 119,
  superscript = 120,
  contentDeletion = 125,
  contentInsertion = 126,
  mark = 127,
  suggestion = 128,
};

// An object's states, one bit each.
class States {
 public:
  enum Bit { active = 1, editable = 7, focused = 12, showing = 25, visible = 30 };

  explicit States(std::uint64_t bits = 0) : bits_(bits) {}
  bool has(Bit bit) const { return (bits_ >> bit & 1) != 0; }

 private:
  std::uint64_t bits_;
};

// What an answer holds, or an empty value where it is an error or something else.
std::vector<ObjectRef> objectsIn(const QDBusMessage& answer);
ObjectRef objectIn(const QDBusMessage& answer);
States statesIn(const QDBusMessage& answer);
Role roleIn(const QDBusMessage& answer);
// The answer's first value; that of a property is taken out of its variant.
QVariant valueIn(const QDBusMessage& answer);
bool isAnswer(const QDBusMessage& answer);
// Whether the program did not answer in time.
bool isLate(const QDBusMessage& answer);

}  // namespace tavin::atspi
