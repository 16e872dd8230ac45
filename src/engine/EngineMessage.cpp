#include "engine/EngineMessage.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "engine/StrictJson.h"

namespace tavin {
namespace {

struct Known {
  const char* id;
  const char* text;  // As in speech/tavin/messages.py, which has the same names.
};

constexpr Known knownMessages[] = {
    {"needs-key",
     QT_TRANSLATE_NOOP("Engine", "%1 needs a key: choose “Set API Key” in Tavin's menu.")},
    {"key-refused", QT_TRANSLATE_NOOP("Engine", "%1 does not accept the key (HTTP %2).")},
    {"no-credit",
     QT_TRANSLATE_NOOP("Engine", "%1 wants to be paid: the account has no credit left (HTTP %2).")},
    {"quota-used-up",
     QT_TRANSLATE_NOOP("Engine", "%1 says that the account's quota is used up (HTTP %2).")},
    {"cloud-silent", QT_TRANSLATE_NOOP("Engine", "%1 is too slow or does not answer.")},
    {"cloud-not-found",
     QT_TRANSLATE_NOOP("Engine", "%1 cannot be found; this computer may be offline.")},
    {"unreadable", QT_TRANSLATE_NOOP("Engine", "%1 cannot read this text.")},
    {"no-voice-for-language", QT_TRANSLATE_NOOP("Engine", "No voice on this computer speaks %1.")},
    {"downloading", QT_TRANSLATE_NOOP("Engine", "%1 is still downloading its voices (%2%).")},
    {"loading", QT_TRANSLATE_NOOP("Engine", "%1 is still loading its voices.")},
    {"key-unreadable", QT_TRANSLATE_NOOP("Engine", "The key for %1 cannot be read: %2")},
    {"key-not-kept",
     QT_TRANSLATE_NOOP("Engine", "The key for %1 is kept only until Tavin ends: %2")},
    {"key-not-removed", QT_TRANSLATE_NOOP("Engine", "The key for %1 could not be removed: %2")},
    {"keyring-locked", QT_TRANSLATE_NOOP("Engine", "The keyring was not unlocked.")},
    {"keyring-silent", QT_TRANSLATE_NOOP("Engine", "The keyring does not answer.")},
    {"keyring-absent",
     QT_TRANSLATE_NOOP("Engine",
                       "This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.")},
    {"sound-server-silent", QT_TRANSLATE_NOOP("Engine", "The sound server does not answer.")},
    {"sound-not-started", QT_TRANSLATE_NOOP("Engine", "The sound output could not be started.")},
    {"no-pip",
     QT_TRANSLATE_NOOP(
         "Engine",
         "Python's pip is missing: install the package python3-venv, then choose %1 again.")},
    {"disk-full",
     QT_TRANSLATE_NOOP("Engine", "The disk is full: make room in %1, then choose %2 again.")},
    {"no-room",
     QT_TRANSLATE_NOOP(
         "Engine", "%1 needs %2 MB in %3, and %4 MB are free. Make room, then choose %5 again.")},
    {"unwritable",
     QT_TRANSLATE_NOOP("Engine", "%1 cannot be written: %2. See to it, then choose %3 again.")},
    {"no-libraries-by-network",
     QT_TRANSLATE_NOOP(
         "Engine",
         "%1's libraries could not be downloaded. Check the network, then choose %2 again.")},
    {"no-files-by-network",
     QT_TRANSLATE_NOOP("Engine",
                       "No download from %1: %2. Check the network, then choose %3 again.")},
    {"setup-too-slow",
     QT_TRANSLATE_NOOP("Engine", "Getting the voices takes too long. Choose %1 again.")},
    {"setup-failed", QT_TRANSLATE_NOOP("Engine", "%1 could not be set up. Choose it again.")},
    {"key-not-allowed",
     QT_TRANSLATE_NOOP("Engine", "%1 does not allow this with the key (HTTP %2).")},
    {"voice-unknown",
     QT_TRANSLATE_NOOP("Engine", "%1 does not know this voice or model (HTTP %2).")},
    {"asked-too-often",
     QT_TRANSLATE_NOOP(
         "Engine",
         "%1 is asked too often or the account's quota is used up; try again later (HTTP %2).")},
    {"cloud-in-trouble",
     QT_TRANSLATE_NOOP("Engine", "%1 has trouble of its own; try again later (HTTP %2).")},
    {"text-not-accepted", QT_TRANSLATE_NOOP("Engine", "%1 did not accept the text (HTTP %2).")},
    {"cloud-refuses", QT_TRANSLATE_NOOP("Engine", "%1 did not do as asked (HTTP %2).")},
    {"cloud-broke-off", QT_TRANSLATE_NOOP("Engine", "%1 broke off the connection.")},
    {"cloud-not-reached", QT_TRANSLATE_NOOP("Engine", "%1 cannot be reached: %2.")},
    {"proxy-refuses", QT_TRANSLATE_NOOP("Engine", "the proxy does not allow it")},
    {"cloud-not-trusted",
     QT_TRANSLATE_NOOP("Engine", "%1 cannot be trusted: its certificate is not valid.")},
    {"choice-not-kept",
     QT_TRANSLATE_NOOP("Engine", "This choice is kept only until Tavin ends: %1.")},
    {"reading-failed", QT_TRANSLATE_NOOP("Engine", "The engine could not read this text.")},
    {"keyring-closed", QT_TRANSLATE_NOOP("Engine", "The keyring is locked.")},
    {"libraries-not-loaded",
     QT_TRANSLATE_NOOP("Engine", "%1's libraries cannot be loaded (%2). Choose %3 again.")},
    {"espeak-missing",
     QT_TRANSLATE_NOOP("Engine", "eSpeak NG is not installed (package libespeak-ng1).")},
    {"download-refused",
     QT_TRANSLATE_NOOP(
         "Engine", "%1 refuses the download (answer %2). Choose %3 again later, or update Tavin.")},
    {"setup-stopped",
     QT_TRANSLATE_NOOP("Engine", "Getting the voices stopped unexpectedly (%1). Choose %2 again.")},
    {"ended-too-early", QT_TRANSLATE_NOOP("Engine", "it ended too early")},
    {"went-on-elsewhere", QT_TRANSLATE_NOOP("Engine", "it went on at another place")},
    {"something-else-sent", QT_TRANSLATE_NOOP("Engine", "something else was sent")},
    {"transfer-too-slow", QT_TRANSLATE_NOOP("Engine", "it is too slow")},
    {"no-answer", QT_TRANSLATE_NOOP("Engine", "no answer")},
    {"answer", QT_TRANSLATE_NOOP("Engine", "answer %1")},
    {"no-sound-output", QT_TRANSLATE_NOOP("Engine", "No sound output is connected.")},
    {"sound-output-gone", QT_TRANSLATE_NOOP("Engine", "The sound output was disconnected.")},
    {"sound-not-started-because",
     QT_TRANSLATE_NOOP("Engine", "The sound output could not be started (%1).")},
    {"sound-stopped", QT_TRANSLATE_NOOP("Engine", "The sound output stopped unexpectedly (%1).")},
    {"not-started", QT_TRANSLATE_NOOP("Engine", "%1 could not be started.")},
    {"not-started-because", QT_TRANSLATE_NOOP("Engine", "%1 could not be started (%2).")},
    {"stopped", QT_TRANSLATE_NOOP("Engine", "%1 stopped unexpectedly (%2) and was started again.")},
    {"answer-senseless", QT_TRANSLATE_NOOP("Engine", "%1 sent an answer that makes no sense.")},
    {"no-sound-sent", QT_TRANSLATE_NOOP("Engine", "%1 sent something other than sound.")},
    {"too-much-sound", QT_TRANSLATE_NOOP("Engine", "%1 sent more sound than the text can have.")},
    {"no-voice-offered", QT_TRANSLATE_NOOP("Engine", "%1 offers no voice to this account.")},
    {"other-files",
     QT_TRANSLATE_NOOP("Engine",
                       "%1 sent other files than expected. Choose %2 again, or update Tavin.")},
    {"other-file",
     QT_TRANSLATE_NOOP("Engine",
                       "%1 offers another file than expected. Choose %2 again, or update Tavin.")},
    {"voice-not-loaded",
     QT_TRANSLATE_NOOP("Engine", "Choose this voice of Piper again: it cannot be loaded (%1).")},
    {"files-not-loaded",
     QT_TRANSLATE_NOOP("Engine", "Choose Kokoro again: its files cannot be loaded (%1).")},
    {"no-secretstorage",
     QT_TRANSLATE_NOOP("Engine", "Package python3-secretstorage is not installed.")},
    {"no-session-bus",
     QT_TRANSLATE_NOOP("Engine", "Without a session bus, the keyring cannot be reached.")},
    {"keyring-not-asked", QT_TRANSLATE_NOOP("Engine", "The keyring could not be asked.")},
    {"no-key-stored", QT_TRANSLATE_NOOP("Engine", "What is stored there is not a key.")},
    {"espeak-data-missing",
     QT_TRANSLATE_NOOP("Engine", "eSpeak NG's data is missing (package espeak-ng-data).")},
};

const char* textOf(const QString& id) {
  const auto* const found = std::ranges::find_if(
      knownMessages, [&id](const Known& known) { return id == QLatin1String(known.id); });
  return found == std::end(knownMessages) ? nullptr : found->text;
}

// Another version of the engine may fill in something else.
bool takes(const QString& pattern, std::size_t count) {
  return !pattern.contains(QStringLiteral("%%1").arg(count + 1)) &&
         (count == 0 || pattern.contains(QStringLiteral("%%1").arg(count)));
}

EngineMessage decodeValue(const Json& value) {
  if (!value.is_object())
    return {.text = textIn(value), .id = {}, .values = {}};
  return EngineMessage::decode(textIn(memberOf(value, "text")), memberOf(value, "id"),
                               memberOf(value, "values"));
}

}  // namespace

EngineMessage EngineMessage::decode(const QString& text, const Json& id, const Json& values) {
  EngineMessage message{.text = text, .id = textIn(id), .values = {}};
  if (values.is_array())
    for (const Json& value : values) message.values.push_back(decodeValue(value));
  return message;
}

Words EngineMessage::words() const {
  const char* const known = textOf(id);
  if (known == nullptr || !takes(QString::fromUtf8(known), values.size()))
    return text;
  const QString translation = QCoreApplication::translate("Engine", known);
  // The engine's own words are the English ones.
  if (translation == QString::fromUtf8(known))
    return text;
  QStringList shown;
  for (const EngineMessage& value : values) shown << value.words().shown;
  return {text, filled(translation, shown)};
}

}  // namespace tavin
