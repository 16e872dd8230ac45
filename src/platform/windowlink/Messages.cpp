#include "platform/windowlink/Messages.h"

#include <QDataStream>
#include <QIODevice>
#include <type_traits>

namespace tavin::windowlink {
namespace {

constexpr auto version = QDataStream::Qt_6_4;
// A menu in a menu is the deepest that Tavin has.
constexpr int deepest = 8;
// So that what is typed is not left behind in a buffer that grew too small.
constexpr qsizetype usualSize = 8192;

template <typename T>
concept Structure = requires(T& value) {
  T::fields(value);
};

class Writer {
 public:
  Writer() {
    bytes_.reserve(usualSize);
    stream_.setVersion(version);
  }

  template <typename T>
  void write(const T& value) {
    if constexpr (Structure<T>)
      std::apply([this](const auto&... parts) { (write(parts), ...); }, T::fields(value));
    else if constexpr (std::is_enum_v<T>)
      stream_ << static_cast<quint8>(value);
    else
      stream_ << value;
  }
  template <typename T>
  void write(const std::optional<T>& value) {
    write(value.has_value());
    if (value)
      write(*value);
  }
  template <typename T>
  void write(const std::vector<T>& values) {
    write(static_cast<quint32>(values.size()));
    for (const T& value : values) write(value);
  }
  void write(const QStringList& values) {
    write(static_cast<quint32>(values.size()));
    for (const QString& value : values) write(value);
  }

  template <typename... Kinds>
  QByteArray message(const std::variant<Kinds...>& message) {
    write(static_cast<quint8>(message.index()));
    std::visit([this](const auto& kind) { write(kind); }, message);
    return bytes_;
  }

 private:
  QByteArray bytes_;
  QDataStream stream_{&bytes_, QIODevice::WriteOnly};
};

// Reads nothing more once something was wrong.
class Reader {
 public:
  explicit Reader(const QByteArray& bytes) : stream_(bytes) { stream_.setVersion(version); }

  template <typename T>
  void read(T& value) {
    if constexpr (Structure<T>)
      readStructure(value);
    else
      stream_ >> value;
  }
  void read(bool& value) {
    quint8 byte = 0;
    stream_ >> byte;
    value = byte != 0;
    refuseUnless(byte <= 1);
  }
  void read(Toggle& value) { readEnum(value, Toggle::radio); }
  void read(MenuLine::Kind& value) { readEnum(value, MenuLine::Kind::separator); }
  template <typename T>
  void read(std::optional<T>& value) {
    bool has = false;
    read(has);
    if (has)
      read(value.emplace());
  }
  template <typename T>
  void read(std::vector<T>& values) {
    for (quint32 left = readCount(); left > 0 && isGood(); --left) read(values.emplace_back());
  }
  void read(QStringList& values) {
    for (quint32 left = readCount(); left > 0 && isGood(); --left) read(values.emplace_back());
  }

  template <typename... Kinds>
  std::optional<std::variant<Kinds...>> message() {
    quint8 index = 0;
    read(index);
    std::variant<Kinds...> message;
    quint8 next = 0;
    ((next++ == index ? readKind<Kinds>(message) : void()), ...);
    refuseUnless(index < sizeof...(Kinds) && stream_.atEnd());
    return isGood() ? std::optional(std::move(message)) : std::nullopt;
  }

 private:
  bool isGood() const { return stream_.status() == QDataStream::Ok; }
  void refuseUnless(bool right) {
    if (!right)
      stream_.setStatus(QDataStream::ReadCorruptData);
  }

  template <typename Kind, typename Message>
  void readKind(Message& message) {
    read(message.template emplace<Kind>());
  }
  template <typename T>
  void readStructure(T& value) {
    refuseUnless(++depth_ <= deepest);
    if (isGood())
      std::apply([this](auto&... parts) { (read(parts), ...); }, T::fields(value));
    --depth_;
  }
  template <typename T>
  void readEnum(T& value, T last) {
    quint8 byte = 0;
    stream_ >> byte;
    refuseUnless(byte <= static_cast<quint8>(last));
    value = static_cast<T>(byte);
  }
  // Each thing that is counted takes a byte at least: no count makes us take memory that the
  // message itself did not.
  quint32 readCount() {
    quint32 count = 0;
    stream_ >> count;
    refuseUnless(count <= stream_.device()->bytesAvailable());
    return isGood() ? count : 0;
  }

  QDataStream stream_;
  int depth_ = 0;
};

template <typename... Kinds>
std::optional<std::variant<Kinds...>> decode(const QByteArray& bytes,
                                             const std::variant<Kinds...>* /*kinds*/) {
  return Reader(bytes).message<Kinds...>();
}

}  // namespace

QByteArray encode(const Request& request) { return Writer().message(request); }
QByteArray encode(const Event& event) { return Writer().message(event); }

std::optional<Request> decodeRequest(const QByteArray& message) {
  return decode(message, static_cast<const Request*>(nullptr));
}

std::optional<Event> decodeEvent(const QByteArray& message) {
  return decode(message, static_cast<const Event*>(nullptr));
}

}  // namespace tavin::windowlink
