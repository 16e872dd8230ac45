// The program that shows Tavin's windows, on whose behalf it is started with one end of a socket
// pair as its standard input and the name of Qt's windowing plug-in. It ends with that socket and
// with Tavin, in whatever way.
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <array>
#include <csignal>
#include <cstdio>
#include <string>

#include "platform/Installation.h"
#include "platform/desktop/Catalogue.h"
#include "platform/posix/OwnProcess.h"
#include "platform/posix/ProcessFolder.h"
#include "platform/widgets/GnomeLook.h"
#include "platform/widgets/Windows.h"

namespace tavin::widgets {
namespace {

bool isSocket(int file) {
  struct stat status = {};
  return ::fstat(file, &status) == 0 && S_ISSOCK(status.st_mode);
}

// No program that a plug-in starts inherits it.
posix::FileDescriptor takeSocket() {
  posix::FileDescriptor socket(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3));
  const posix::FileDescriptor null(::open("/dev/null", O_RDWR | O_CLOEXEC));
  ::dup2(null.get(), STDIN_FILENO);
  return socket;
}

// Of the texts that Qt's own widgets show, such as the menu of a text field.
void installQtCatalogue(const QString& language) {
  auto* translator = new QTranslator(qApp);
  if (!language.isEmpty() && translator->load(QStringLiteral("qtbase_") + language,
                                              QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(translator);
}

// As one program with Tavin, wherever its name is shown.
void setUp() {
  QCoreApplication::setApplicationName(QStringLiteral("tavin"));
  QCoreApplication::setApplicationVersion(QLatin1String(version));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavin"));
  QGuiApplication::setDesktopFileName(QStringLiteral("app.tavin.Tavin"));
  QGuiApplication::setQuitOnLastWindowClosed(false);
  // KDE's tray icons hold such a lock: the end of one would end the program.
  QCoreApplication::setQuitLockEnabled(false);
  const QString language = desktop::installCatalogue(desktop::messageLanguages());
  if (desktop::isRightToLeft())
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  installQtCatalogue(language);
  followGnomeLook();
}

int run(std::string qtPlatform) {
  std::string name = "tavin";
  std::string option = "-platform";
  std::array<char*, 4> arguments{name.data(), option.data(), qtPlatform.data(), nullptr};
  int count = 3;
  posix::FileDescriptor socket = takeSocket();
  QApplication application(count, arguments.data());
  setUp();
  const Windows windows(std::move(socket), [] { ::_exit(0); });
  return QApplication::exec();
}

}  // namespace
}  // namespace tavin::widgets

int main(int argc, char** argv) {
  // Also where it is stopped when Tavin ends.
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  ::prctl(PR_SET_NAME, tavin::posix::windowProgramName);  // It is started by the number of a file.
  tavin::posix::keepMemoryPrivate();
  if (argc != 2 || !tavin::widgets::isSocket(STDIN_FILENO)) {
    std::fputs("tavin-windows: this is a part of Tavin, which starts it when it is needed\n",
               stderr);
    return 2;
  }
  // Neither the session manager nor the launcher that started Tavin knows of this process.
  ::unsetenv("SESSION_MANAGER");
  ::unsetenv("DESKTOP_STARTUP_ID");
  return tavin::widgets::run(argv[1]);
}
