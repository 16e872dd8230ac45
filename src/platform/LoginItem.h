#pragma once

#include <QString>
#include <optional>

namespace tavin {

enum class LoginItemStatus { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

// Whether the program starts when the user logs in. Main thread only.
class LoginItem {
 public:
  virtual ~LoginItem() = default;
  virtual LoginItemStatus status() = 0;
  // Both answer with a description of what went wrong, or nothing on success.
  virtual std::optional<QString> registerItem() = 0;
  virtual std::optional<QString> unregisterItem() = 0;
};

}  // namespace tavin
