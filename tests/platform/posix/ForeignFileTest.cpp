#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/posix/ForeignFile.h"

namespace tavin::test {
namespace {

using posix::readFileOf;
using posix::readForeignFile;

class ForeignFileTest : public ::testing::Test {
 protected:
  std::string path(const char* name) const { return folder.filePath(name).toStdString(); }
  void lay(const char* name, const QByteArray& bytes) const {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  // As a process that has this test's root folder sees it.
  std::string fromRoot(const char* name) const { return path(name).substr(1); }

  QTemporaryDir folder;
};

TEST_F(ForeignFileTest, RegularFileIsReadUpToSixtyFourKilobytes) {
  lay("short", "text\n");
  lay("long", QByteArray(100'000, 'x'));
  EXPECT_EQ(readForeignFile(path("short")), "text\n");
  EXPECT_EQ(readForeignFile(path("long")), std::string(65536, 'x'));
  EXPECT_EQ(readFileOf(::getpid(), fromRoot("short")), "text\n");
}

TEST_F(ForeignFileTest, PipeDeviceFolderAndNothingAreNone) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(readForeignFile(path("pipe")));
  EXPECT_FALSE(readFileOf(::getpid(), fromRoot("pipe")));
  EXPECT_FALSE(readForeignFile("/dev/zero"));
  EXPECT_FALSE(readForeignFile(folder.path().toStdString()));
  EXPECT_FALSE(readForeignFile(path("nothing")));
}

TEST_F(ForeignFileTest, LinkToADeviceIsNone) {
  ASSERT_EQ(::symlink("/dev/zero", path("endless").c_str()), 0);
  EXPECT_FALSE(readForeignFile(path("endless")));
  EXPECT_FALSE(readFileOf(::getpid(), fromRoot("endless")));
}

TEST_F(ForeignFileTest, LinkThroughProcLeadsNowhere) {
  lay("file", "text");
  ASSERT_EQ(::symlink(("/proc/self/root" + path("file")).c_str(), path("magic").c_str()), 0);
  EXPECT_EQ(readForeignFile(path("magic")), "text");
  EXPECT_FALSE(readFileOf(::getpid(), fromRoot("magic")));
}

TEST_F(ForeignFileTest, ProcessThatIsNotThereHasNoFiles) {
  EXPECT_FALSE(readFileOf(-1, "etc/passwd"));
}

}  // namespace
}  // namespace tavin::test
