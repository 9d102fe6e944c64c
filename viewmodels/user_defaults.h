#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace trellivar {

/// The user's preferences, kept by the system. Main thread.
class UserDefaults {
public:
  virtual ~UserDefaults() = default;

  /// None when there is no text under the key.
  virtual std::optional<std::string> string(std::string_view key) const = 0;
  /// False when there is no truth value under the key.
  virtual bool boolean(std::string_view key) const = 0;
  virtual void setString(std::string_view key, std::string_view value) = 0;
  virtual void setBoolean(std::string_view key, bool value) = 0;

  /// The languages that the user prefers in all applications, the most preferred first, as BCP 47
  /// tags such as "zh-Hans-CN".
  virtual std::vector<std::string> preferredLanguages() const = 0;

protected:
  UserDefaults() = default;
  UserDefaults(const UserDefaults&) = default;
  UserDefaults& operator=(const UserDefaults&) = default;
};

/// Preferences that end with the object.
class MemoryUserDefaults final : public UserDefaults {
public:
  using Value = std::variant<std::string, bool>;

  explicit MemoryUserDefaults(std::vector<std::string> preferredLanguages = {})
      : languages_(std::move(preferredLanguages)) {}

  std::optional<std::string> string(std::string_view key) const override {
    const auto* text = find<std::string>(key);
    return text ? std::optional(*text) : std::nullopt;
  }
  bool boolean(std::string_view key) const override {
    const auto* value = find<bool>(key);
    return value && *value;
  }
  void setString(std::string_view key, std::string_view value) override {
    values_[std::string(key)] = std::string(value);
  }
  void setBoolean(std::string_view key, bool value) override { values_[std::string(key)] = value; }
  std::vector<std::string> preferredLanguages() const override { return languages_; }

  /// Everything that has been set.
  const std::map<std::string, Value, std::less<>>& values() const noexcept { return values_; }

private:
  template <class T> const T* find(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? nullptr : std::get_if<T>(&found->second);
  }

  std::vector<std::string> languages_;
  std::map<std::string, Value, std::less<>> values_;
};

} // namespace trellivar
