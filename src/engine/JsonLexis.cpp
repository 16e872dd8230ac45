#include "engine/JsonLexis.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tavin {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Qt takes an integer that lies just below the least of 64 bits for that one.
bool isRoundedToLeast(QByteArrayView digits) {
  std::int64_t exact = 0;
  double rounded = 0;
  return std::from_chars(digits.begin(), digits.end(), exact).ec ==
             std::errc::result_out_of_range &&
         std::from_chars(digits.begin(), digits.end(), rounded).ec == std::errc() &&
         rounded == -0x1p63;
}

// Reads on over the bytes; at their end `next` is a NUL, which no rule below lets through.
class Lexis {
 public:
  explicit Lexis(QByteArrayView json) : json_(json) {}

  bool isStrict() {
    while (at_ < json_.size()) {
      if (next() == '"') {
        if (!string())
          return false;
      } else if (next() == '-' || isDigit(next())) {
        if (!number())
          return false;
      } else if (next() == '.') {
        return false;  // The one thing that begins a number only for Qt.
      } else {
        ++at_;
      }
    }
    return true;
  }

 private:
  char next() const { return at_ < json_.size() ? json_[at_] : '\0'; }
  bool take(char wanted) {
    const bool found = next() == wanted;
    at_ += found ? 1 : 0;
    return found;
  }
  bool digits() {
    const qsizetype begin = at_;
    while (isDigit(next())) ++at_;
    return at_ > begin;
  }

  bool number() {
    const qsizetype sign = at_;
    take('-');
    const bool zero = next() == '0';
    const qsizetype begin = at_;
    if (!digits() || (zero && at_ > begin + 1) || isRoundedToLeast(json_.sliced(sign, at_ - sign)))
      return false;
    if (take('.') && !digits())
      return false;
    if (take('e') || take('E')) {
      if (!take('+'))
        take('-');
      return digits();
    }
    return true;
  }

  bool string() {
    ++at_;
    while (!take('"')) {
      if (take('\\')) {
        if (!escape())
          return false;
      } else if (static_cast<unsigned char>(next()) < 0x20) {
        return false;
      } else {
        ++at_;
      }
    }
    return true;
  }

  bool escape() {
    if (next() != 'u')
      return std::ranges::any_of(std::string_view("\"\\/bfnrt"),
                                 [this](char c) { return take(c); });
    const auto unit = codeUnit();
    const bool high = unit && *unit >= 0xd800 && *unit < 0xdc00;
    if (!high)
      return unit && (*unit < 0xd800 || *unit > 0xdfff);
    const auto low = take('\\') ? codeUnit() : std::nullopt;
    return low && *low >= 0xdc00 && *low <= 0xdfff;
  }

  // After the backslash: a "u" and four digits.
  std::optional<unsigned> codeUnit() {
    if (!take('u') || json_.size() - at_ < 4)
      return std::nullopt;
    const QByteArrayView hex = json_.sliced(at_, 4);
    at_ += 4;
    unsigned unit = 0;
    const auto [end, error] = std::from_chars(hex.begin(), hex.end(), unit, 16);
    return end == hex.end() && error == std::errc() ? std::optional(unit) : std::nullopt;
  }

  QByteArrayView json_;
  qsizetype at_ = 0;
};

}  // namespace

bool hasStrictJsonLexis(QByteArrayView json) { return Lexis(json).isStrict(); }

}  // namespace tavin
