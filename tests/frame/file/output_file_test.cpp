#include "frame/file/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "dax/file.h"
#include "fuzz/memory_file.h"

namespace dax::test {
namespace {

namespace fs = std::filesystem;
using Way = OutputFile::Way;

class OutputFileTest : public testing::TestWithParam<Way> {
 protected:
  OutputFileTest() : folder_(testing::TempDir() + "dax-output-" + std::to_string(getpid())), path_(folder_ + "/file") {
    fs::create_directories(folder_);
  }
  ~OutputFileTest() override { fs::remove_all(folder_); }

  static void save(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static std::string load(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  size_t files() const {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }
  // In pieces below and above the buffer.
  static bool write(const std::string& path, const std::string& bytes) {
    OutputFile file(path.c_str(), GetParam());
    if (!file.isOpen()) return false;
    size_t at = 0;
    for (size_t piece = 1; at < bytes.size(); at += piece, piece = 3 * piece + 1) {
      file.write(bytes.data() + at, std::min(piece, bytes.size() - at));
    }
    return file.commit();
  }

  std::string folder_, path_;
};

std::string pattern(size_t bytes) {
  std::string text(bytes, '\0');
  for (size_t i = 0; i < bytes; ++i) text[i] = static_cast<char>(i * 7 + i / 256);
  return text;
}

TEST_P(OutputFileTest, WritesAndReplaces) {
  const mode_t mask = umask(027);
  for (const size_t bytes : {0, 1, 4095, 4096, 4097, 100000}) {
    fs::remove(path_);
    EXPECT_TRUE(write(path_, pattern(bytes)));
    EXPECT_EQ(load(path_), pattern(bytes));
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
  }
  umask(mask);
  fs::permissions(path_, fs::perms(0604));
  // Names that other programs left behind are in the way.
  for (int i = 0; i < 3; ++i) save(path_ + "." + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp", "");
  EXPECT_TRUE(write(path_, "new"));
  EXPECT_EQ(load(path_), "new");
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0604));
  EXPECT_EQ(files(), 4u);
  EXPECT_TRUE(write(folder_ + "/" + std::string(255, 'n'), "long"));
  EXPECT_FALSE(write(folder_ + "/" + std::string(256, 'n'), "too long"));
}

TEST_P(OutputFileTest, FollowsLinks) {
  fs::create_directory(folder_ + "/there");
  save(folder_ + "/there/real", "old");
  fs::create_symlink("there/real", path_);
  fs::create_symlink("file", folder_ + "/second");
  EXPECT_TRUE(write(folder_ + "/second", "through two links"));
  EXPECT_TRUE(fs::is_symlink(path_) && fs::is_symlink(folder_ + "/second"));
  EXPECT_EQ(load(folder_ + "/there/real"), "through two links");
  fs::create_symlink("none", folder_ + "/dangling");
  EXPECT_TRUE(write(folder_ + "/dangling", "made"));
  EXPECT_EQ(load(folder_ + "/none"), "made");
  fs::create_symlink("loop", folder_ + "/loop");
  EXPECT_FALSE(write(folder_ + "/loop", ""));
  EXPECT_EQ(errno, ELOOP);
  // A file without a name.
  const fuzz::MemoryFile nameless;
  EXPECT_TRUE(write(nameless.path(), "directly"));
  EXPECT_EQ(nameless.contents().size(), 8u);
}

TEST_P(OutputFileTest, WritesWhatIsNoFileDirectly) {
  ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
  const pid_t reader = fork();
  if (reader == 0) _exit(load(path_) == pattern(100000) ? 0 : 1);
  EXPECT_TRUE(write(path_, pattern(100000)));
  int status = 0;
  waitpid(reader, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(fs::is_fifo(path_));
  EXPECT_TRUE(write("/dev/null", "nothing"));
  EXPECT_FALSE(write("/dev/full", "something"));
  EXPECT_EQ(errno, ENOSPC);
  for (const auto& [path, error] : {std::pair(folder_, EISDIR),
                                    {folder_ + "/", EISDIR},
                                    {folder_ + "/none/", ENOENT},
                                    {folder_ + "/none/file", ENOENT},
                                    {path_ + "/file", ENOTDIR},
                                    {std::string(), ENOENT}}) {
    EXPECT_FALSE(write(path, "x")) << path;
    EXPECT_EQ(errno, error) << path;
  }
}

// A full disk, and the end of the process: there is the old file and nothing else.
TEST_P(OutputFileTest, FailuresLeaveTheOldFile) {
  save(path_, "old");
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit little = {5000, limit.rlim_max};
  for (const std::string& path : {path_, folder_ + "/new"}) {
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    const bool done = write(path, pattern(9000));
    const int error = errno;
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_FALSE(done);
    EXPECT_EQ(error, EFBIG);
  }
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(load(path_), "old");
  EXPECT_EQ(files(), 1u);
  { OutputFile unfinished(path_.c_str(), GetParam()); }
  EXPECT_EQ(files(), 1u);
}

TEST_F(OutputFileTest, AKilledProcessLeavesNothing) {
  save(path_, "old");
  const pid_t killed = fork();
  if (killed == 0) {
    OutputFile file(path_.c_str());
    file.write(pattern(9000).data(), 9000);
    raise(SIGKILL);
  }
  waitpid(killed, nullptr, 0);
  EXPECT_EQ(load(path_), "old");
  const bool anonymous = open(folder_.c_str(), O_TMPFILE | O_WRONLY, 0600) >= 0;
  EXPECT_EQ(files(), anonymous ? 1u : 2u);
}

TEST_F(OutputFileTest, Export) {
  EXPECT_EQ(DAX_WriteFile(path_.c_str(), "bytes", 5), DAX_STS_OK);
  EXPECT_EQ(load(path_), "bytes");
  EXPECT_EQ(DAX_WriteFile("/dev/full", "bytes", 5), DAX_STS_FILE_WRITE);
  EXPECT_EQ(DAX_WriteFile(folder_.c_str(), "bytes", 5), DAX_STS_FILE_OPEN);
}

INSTANTIATE_TEST_SUITE_P(Ways, OutputFileTest, testing::Values(Way::best, Way::named),
                         [](const auto& way) { return way.param == Way::best ? "best" : "named"; });

}  // namespace
}  // namespace dax::test
