#pragma once

#include <unistd.h>

#include <utility>

namespace tavin::posix {

// An open file, closed on destruction. Empty (-1) where opening failed; errno says why.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd = -1) : fd_(fd) {}
  ~FileDescriptor() { reset(); }
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
      reset();
      fd_ = std::exchange(other.fd_, -1);
    }
    return *this;
  }

  explicit operator bool() const { return fd_ >= 0; }
  int get() const { return fd_; }
  // Leaves the file open, for whom it is handed to.
  int release() { return std::exchange(fd_, -1); }
  void reset() {
    if (fd_ >= 0)
      ::close(std::exchange(fd_, -1));
  }

 private:
  int fd_;
};

}  // namespace tavin::posix
