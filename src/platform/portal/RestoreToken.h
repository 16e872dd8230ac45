#pragma once

#include <QString>

namespace tavin::portal {

// The word by which a desktop remembers, beyond this session, that it let us type. A secret of the
// user's: the file is the user's alone. Main thread only.
class RestoreToken {
 public:
  // In the folder of the user's settings.
  RestoreToken();
  explicit RestoreToken(QString path) : path_(std::move(path)) {}

  // Empty where there is none.
  QString read() const;
  // Each word serves once, so the next one takes its place. What cannot be stored is asked for
  // again at the next start.
  void store(const QString& token) const;

 private:
  QString path_;
};

}  // namespace tavin::portal
