// Text as programs of the age before Unicode give it.

#include "Claim.h"
#include "platform/x11/CompoundText.h"

using namespace tavin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto text = x11::fromCompoundText(bytes);
  if (!bytes.contains('\x1b'))
    fuzz::claim(text == QString::fromLatin1(bytes), "without escapes it is Latin-1");
  QByteArray plain = bytes;
  plain.replace('\x1b', ' ');
  fuzz::claim(x11::fromCompoundText("\x1b%G" + plain + "\x1b%@") == QString::fromUtf8(plain),
              "a part in UTF-8 is read");
  fuzz::claim(!x11::fromCompoundText("\x1b$)A" + bytes), "an older encoding is not guessed at");
  return 0;
}
