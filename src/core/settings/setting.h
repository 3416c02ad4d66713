#pragma once
#include <string_view>
#include <utility>
#include <vector>

#include "core/settings/setting_codec.h"
#include "platform/system/observers.h"

namespace nimbletype {

// A setting seen without its type: by its key and in its stored form.
class AnySetting {
 public:
  AnySetting(std::string_view key, SettingType type, std::span<const std::string_view> choices)
      : key_(key), type_(type), choices_(choices) {}
  virtual ~AnySetting() = default;
  AnySetting(const AnySetting&) = delete;
  AnySetting& operator=(const AnySetting&) = delete;

  std::string_view key() const { return key_; }
  SettingType type() const { return type_; }
  std::span<const std::string_view> choices() const { return choices_; }
  virtual DefaultsValue stored() const = 0;
  // Whether a value in its stored form is of the type.
  virtual bool accepts(const DefaultsValue& value) const = 0;
  // Sets the value from its stored form; false, with nothing changed, when it is not of the type.
  virtual bool assign(const DefaultsValue& value) = 0;
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

 protected:
  Observers observers_;

 private:
  std::string_view key_;
  SettingType type_;
  std::span<const std::string_view> choices_;
};

// The settings of one store in the order they were declared.
class SettingsTable {
 public:
  explicit SettingsTable(DefaultsStore& store) : store_(store) {}
  SettingsTable(const SettingsTable&) = delete;
  SettingsTable& operator=(const SettingsTable&) = delete;

  DefaultsStore& store() const { return store_; }
  void add(AnySetting& setting) { settings_.push_back(&setting); }
  std::span<AnySetting* const> settings() const { return settings_; }

 private:
  DefaultsStore& store_;
  std::vector<AnySetting*> settings_;
};

// One setting: read from the store when made, written to it and told to its observers on every real change.
template <typename T>
class Setting : public AnySetting {
 public:
  Setting(SettingsTable& table, std::string_view key, T fallback)
      : AnySetting(key, settingType<T>(), settingChoices<T>()),
        store_(table.store()),
        value_(std::move(fallback)) {
    if (const auto found = store_.get(key))
      if (auto decoded = decode(*found)) value_ = *std::move(decoded);
    table.add(*this);
  }

  const T& get() const { return value_; }
  void set(T value) {
    if (value == value_) return;
    value_ = std::move(value);
    store_.set(key(), encodeSetting(value_));
    observers_.notify();
  }

  DefaultsValue stored() const override { return encodeSetting(value_); }
  bool accepts(const DefaultsValue& value) const override { return decode(value).has_value(); }
  bool assign(const DefaultsValue& value) override {
    auto decoded = decode(value);
    if (!decoded) return false;
    set(*std::move(decoded));
    return true;
  }

 private:
  static std::optional<T> decode(const DefaultsValue& value) {
    return decodeSetting(value, std::type_identity<T>());
  }

  DefaultsStore& store_;
  T value_;
};

}  // namespace nimbletype
