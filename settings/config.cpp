#include "settings/config.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "settings/utf8_text.h"

namespace zentro {

namespace {

std::string LowerCase(std::string text) {
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
    }
    return text;
}

std::string Key(SettingNumber number, std::string_view subClass) {
    return std::to_string(static_cast<std::int32_t>(number)) + LowerCase(Utf8Text(subClass));
}

// Gives integers the width that the settings file will give them.
SettingValue NormalisedInteger(SettingNumber number, std::int32_t integer) {
    const auto setting = std::ranges::find(Settings(), number, &Setting::number);
    const SettingKind kind = setting == Settings().end() ? SettingKind::Integer : setting->kind;
    if (kind == SettingKind::FloatingPoint) return static_cast<double>(integer);
    if (kind == SettingKind::Colour || !std::in_range<std::int16_t>(integer)) return integer;
    return static_cast<std::int16_t>(integer);
}

SettingValue Normalised(SettingNumber number, SettingValue value) {
    if (const auto* text = std::get_if<std::string>(&value)) return Utf8Text(*text);
    if (const auto* narrow = std::get_if<std::int16_t>(&value)) {
        return NormalisedInteger(number, *narrow);
    }
    if (const auto* wide = std::get_if<std::int32_t>(&value)) {
        return NormalisedInteger(number, *wide);
    }
    if (const auto* real = std::get_if<double>(&value); real && !std::isfinite(*real)) return {};
    return value;
}

SettingValue DefaultValue(const Setting& setting, const std::filesystem::path& programFolder) {
    switch (setting.kind) {
        case SettingKind::Text: return std::string(setting.defaultText);
        case SettingKind::ProgramPath:  // "/" adds the separator, for an empty name as well
            return PathText((programFolder / setting.defaultText).make_preferred());
        case SettingKind::Flag:
        case SettingKind::Integer:
        case SettingKind::Colour: return static_cast<std::int32_t>(setting.defaultNumber);
        case SettingKind::FloatingPoint: return setting.defaultNumber;
    }
    return {};
}

}  // namespace

SettingValue Config::Item(SettingNumber number) const {
    const auto found = index_.find(Key(number, {}));
    return found == index_.end() ? SettingValue{} : records_[found->second].value;
}

const ConfigValue* Config::Search(SettingNumber number, std::string_view subClass) const {
    const auto found = index_.find(Key(number, subClass));
    if (found == index_.end()) return nullptr;
    const ConfigValue& record = records_[found->second];
    return record.configType == number ? &record : nullptr;  // 2 with "9" has the key of 29
}

bool Config::AddOrUpdate(SettingNumber number, SettingValue value, std::string_view subClass) {
    const auto found = index_.find(Key(number, subClass));
    if (found == index_.end()) return Add(number, subClass, std::move(value));
    ConfigValue& record = records_[found->second];
    SettingValue normalised = Normalised(record.configType, std::move(value));
    if (record.value == normalised) return false;
    record.value = std::move(normalised);
    return true;
}

bool Config::Add(SettingNumber number, std::string_view subClass, SettingValue value) {
    if (!index_.emplace(Key(number, subClass), records_.size()).second) return false;
    records_.push_back({number, Utf8Text(subClass), Normalised(number, std::move(value))});
    return true;
}

Config DefaultConfig(const std::filesystem::path& programFolder) {
    Config config;
    for (const Setting& setting : Settings()) {
        config.AddOrUpdate(setting.number, DefaultValue(setting, programFolder));
    }
    return config;
}

namespace {

/// A text that stands for no number, where one is needed.
bool IsBroken(const SettingValue& value, const SettingValue& byDefault) {
    if (IsEmpty(value)) return true;
    const auto* text = std::get_if<std::string>(&value);
    const bool isNumber = !std::holds_alternative<std::string>(byDefault);
    return isNumber && text != nullptr && IsEmpty(NumberFromText(*text));
}

}  // namespace

std::vector<ConfigValue> DefaultsOfBroken(const Config& config, const Config& defaults) {
    std::vector<ConfigValue> healing;
    for (const ConfigValue& record : defaults) {
        const ConfigValue* present = config.Search(record.configType, record.subClass);
        if (present == nullptr || IsBroken(present->value, record.value)) healing.push_back(record);
    }
    return healing;
}

}  // namespace zentro
