#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "settings/setting.h"
#include "settings/setting_value.h"

namespace zentro {

/// One record of the settings file.
struct ConfigValue {
    SettingNumber configType{};
    std::string subClass;  ///< empty for every plain setting
    SettingValue value;

    bool operator==(const ConfigValue&) const = default;
};

/// The settings in memory, in the order in which they were added. A record's key is its number in
/// decimal followed by its sub-key ("30", "29Saved"), without regard to the case of A to Z. Values
/// take the form in which a settings file gives them back, so that being saved changes neither
/// their kind nor their text: an integer gets the width that its setting or its size asks for, a
/// text that is no UTF-8 is read as Windows-1252, and a number that is not finite becomes Empty.
class Config {
  public:
    /// The value of the record whose key is the number alone; Empty when there is none.
    SettingValue Item(SettingNumber number) const;

    /// The record with this number and sub-key, or null. Valid until a record is added.
    const ConfigValue* Search(SettingNumber number, std::string_view subClass) const;

    /// Sets the value of the record with this key, which is added when there is none.
    /// True when that changed anything.
    bool AddOrUpdate(SettingNumber number, SettingValue value, std::string_view subClass = {});

    /// Adds a record. False when one with its key is there; that one stays as it is.
    [[nodiscard]] bool Add(SettingNumber number, std::string_view subClass, SettingValue value);

    std::size_t Count() const { return records_.size(); }
    std::vector<ConfigValue>::const_iterator begin() const { return records_.begin(); }
    std::vector<ConfigValue>::const_iterator end() const { return records_.end(); }

  private:
    std::vector<ConfigValue> records_;
    std::unordered_map<std::string, std::size_t> index_;  ///< key in lower case to position
};

/// The defaults of the plain settings that are missing, Empty or of a kind that cannot be read.
std::vector<ConfigValue> DefaultsOfBroken(const Config& config, const Config& defaults);

/// What the program starts with when there is no settings file.
Config DefaultConfig(const std::filesystem::path& programFolder);

}  // namespace zentro
