#pragma once

#include <QString>
#include <algorithm>
#include <string>
#include <vector>

namespace tavin::test {

// What the fakes were asked, in order, each line beginning with the queue that the call came from:
// "main: icon waveform". Tests run every queue by hand on one thread, so no lock is needed.
class Journal {
 public:
  void add(const QString& what) { lines_.push_back((queue_ + ": " + what).toStdString()); }

  const std::vector<std::string>& lines() const { return lines_; }
  void clear() { lines_.clear(); }
  long count(const std::string& line) const {
    return std::count(lines_.begin(), lines_.end(), line);
  }
  // The lines that begin with `start`.
  std::vector<std::string> starting(const std::string& start) const {
    std::vector<std::string> found;
    std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.starts_with(start); });
    return found;
  }

  const QString& queue() const { return queue_; }
  void setQueue(const QString& queue) { queue_ = queue; }

 private:
  std::vector<std::string> lines_;
  QString queue_ = QStringLiteral("main");
};

}  // namespace tavin::test
