// Desktop files, as any program may have left them, and what we write into one as GLib reads it.

#include <glib.h>

#include <QByteArray>
#include <memory>

#include "Claim.h"
#include "platform/desktop/DesktopEntry.h"

using namespace tavin;

namespace {

template <auto release>
struct Release {
  template <typename T>
  void operator()(T* value) const {
    release(value);
  }
};
using KeyFile = std::unique_ptr<GKeyFile, Release<g_key_file_free>>;
using Text = std::unique_ptr<char, Release<g_free>>;
using Arguments = std::unique_ptr<char*, Release<g_strfreev>>;

Text valueAsRead(const QByteArray& line) {
  const QByteArray file = "[Desktop Entry]\n" + line + "\n";
  const KeyFile keys(g_key_file_new());
  fuzz::claim(g_key_file_load_from_data(keys.get(), file.constData(),
                                        static_cast<gsize>(file.size()), G_KEY_FILE_NONE, nullptr),
              "what we write is an entry");
  Text value(g_key_file_get_string(keys.get(), "Desktop Entry", "Exec", nullptr));
  fuzz::claim(value != nullptr, "what we write is a value");
  return value;
}

void claimReadBack(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  fuzz::claim(valueAsRead("Exec=" + desktop::desktopEntryString(text)).get() == utf8,
              "a string reaches its reader as it is");
  const QByteArray command(valueAsRead("Exec=" + desktop::desktopEntryExecArgument(text)).get());
  fuzz::claim(!QByteArray(command).replace("%%", "").contains('%'), "no field code begins");
  int count = 0;
  char** parsed = nullptr;
  const bool isCommand = g_shell_parse_argv(QByteArray(command).replace("%%", "%").constData(),
                                            &count, &parsed, nullptr);
  const Arguments arguments(parsed);
  fuzz::claim(isCommand && count == 1 && arguments.get()[0] == utf8,
              "an argument reaches the program as it is");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto entries = desktop::parseDesktopEntry(file);
  for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
    fuzz::claim(!entry.key().isEmpty() && !entry.key().contains('\n'), "a key is one");
    fuzz::claim(file.contains(entry.value()), "a value stands in the file");
  }
  fuzz::claim(
      desktop::parseDesktopEntry("[Another]\n" + QByteArray(file).replace('[', '(')).isEmpty(),
      "other groups are passed over");
  const QString text = QString::fromUtf8(file).remove(QChar(u'\0'));
  if (!text.isEmpty())
    claimReadBack(u'/' + text);  // Of a program: an absolute path.
  return 0;
}
