// What answers on the engine's port: its status and its list of voices.

#include <QByteArray>
#include <QCoreApplication>

#include "Claim.h"
#include "engine/EngineStatus.h"
#include "platform/desktop/Catalogue.h"

using namespace tavin;

namespace {

// Its messages are shown in the user's language; the C locale shows them as they come.
QCoreApplication& germanApplication() {
  static int count = 1;
  static char name[] = "engine_answers";
  static char* arguments[] = {name, nullptr};
  static QCoreApplication application(count, arguments);
  static const bool installed = [] {
    desktop::installCatalogue({"de"});
    return true;
  }();
  Q_UNUSED(installed);
  return application;
}

void use(const EngineStatus& status) {
  status.isActive();
  status.errorMessage.words();
  status.setupErrorMessage.words();
  if (status.download && *status.download >= 0 && *status.download <= 1)
    fuzz::claim(status.downloadPercent() >= 0 && status.downloadPercent() <= 100,
                "a fraction is a percentage");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  germanApplication();
  const QByteArray json(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto status = EngineStatus::decode(json);
  const auto voices = Voice::decodeList(json);
  if (status)
    use(*status);
  fuzz::claim(!status || !voices, "one answer is not both");
  fuzz::claim(EngineStatus::decode("\n " + json + "\t").has_value() == status.has_value(),
              "white space around an answer says nothing");
  fuzz::claim(Voice::decodeList("\n " + json + "\t").has_value() == voices.has_value(),
              "white space around a list says nothing");
  return 0;
}
