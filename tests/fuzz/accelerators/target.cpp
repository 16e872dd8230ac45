// Key combinations, as the user and other programs have left them in GNOME's settings.

#include <QString>

#include "Claim.h"
#include "platform/gnome/Accelerator.h"

using namespace tavin;
using gnome::Accelerator;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto accelerator = Accelerator::parse(text);
  if (!accelerator)
    return 0;
  fuzz::claim(!accelerator->key.isEmpty() && accelerator->modifiers < 16, "it is a combination");
  fuzz::claim(Accelerator::parse(accelerator->text()) == accelerator,
              "a combination is read as it was written");
  return 0;
}
