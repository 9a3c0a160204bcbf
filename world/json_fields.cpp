#include "world/json_fields.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace zentro::world {

namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 8;
constexpr std::size_t kLongestName = 40;

std::string Shown(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

/// A text of the file in a message: short, and only characters that can be printed.
std::string Quoted(std::string_view text) {
    std::string shown = "\"";
    for (const char character : text.substr(0, kLongestName)) {
        shown += character >= ' ' && character <= '~' ? character : '?';
    }
    return shown + (text.size() > kLongestName ? "...\"" : "\"");
}

/// The library's sentence without its own name and number.
std::string Reason(std::string_view what) {
    const std::size_t end = what.find("] ");
    return std::string(end == std::string_view::npos ? what : what.substr(end + 2));
}

/// Looks on while a text is parsed.
class Watch {
  public:
    explicit Watch(Mistake& mistake) : mistake_(mistake) {}

    bool operator()(int depth, Json::parse_event_t event, const Json& parsed) {
        using Event = Json::parse_event_t;
        if (depth > kDeepest) mistake_.Note("", "too many brackets inside each other");
        if (event == Event::object_start) names_.emplace_back();
        if (event == Event::object_end) names_.pop_back();
        if (event == Event::key) {
            const auto& name = parsed.get_ref<const std::string&>();
            if (!names_.back().insert(name).second)
                mistake_.Note("", "the field " + Quoted(name) + " stands twice in one object");
        }
        return true;
    }

  private:
    Mistake& mistake_;
    std::vector<std::set<std::string>> names_;
};

}  // namespace

void Mistake::Note(const std::string& place, const std::string& wrong) {
    if (!text_.empty()) return;
    text_ = place.empty() ? wrong : place + ": " + wrong;
}

std::optional<Json> ParseJson(std::string_view text, Mistake& mistake) {
    Watch watch(mistake);
    const auto look = [&watch](int depth, Json::parse_event_t event, Json& parsed) {
        return watch(depth, event, parsed);
    };
    try {
        Json json = Json::parse(text, look, true, true);
        if (mistake.Found()) return std::nullopt;
        return json;
    } catch (const Json::exception& error) {
        mistake.Note("", Quoted(Reason(error.what())).substr(1, 200));
        return std::nullopt;
    }
}

Fields::Fields(const Json& object, std::string place, Mistake& mistake)
    : object_(object), place_(std::move(place)), mistake_(mistake) {
    if (!object_.is_object()) mistake_.Note(place_, "must be an object, { ... }");
}

bool Fields::Has(std::string_view name) const {
    return object_.is_object() && object_.contains(name);
}

void Fields::Require(std::string_view name) {
    if (!Has(name)) mistake_.Note(PlaceOf(name), "is missing");
}

std::string Fields::PlaceOf(std::string_view name) const {
    return place_.empty() ? std::string(name) : place_ + "." + std::string(name);
}

void Fields::Complain(std::string_view name, const std::string& wrong) {
    mistake_.Note(PlaceOf(name), wrong);
}

const Json* Fields::Find(std::string_view name) {
    known_.emplace(name);
    if (!Has(name)) return nullptr;
    return &object_.at(name);
}

void Fields::ReadNumber(const Json& value, const std::string& place, double& target,
                        NumberRange range) {
    if (!value.is_number()) {
        mistake_.Note(place, "must be a number");
        return;
    }
    const double number = value.get<double>();
    // Said this way round, so that no number that is none gets through.
    const bool fits = number >= range.least && number <= range.most;
    if (fits)
        target = number;
    else
        mistake_.Note(place, "must be from " + Shown(range.least) + " to " + Shown(range.most));
}

void Fields::ReadPoint(const Json& value, const std::string& place, Point& target, NumberRange x,
                       NumberRange y) {
    if (!value.is_array() || value.size() != 2) {
        mistake_.Note(place, "must be two numbers, [x, y]");
        return;
    }
    ReadNumber(value[0], place + "[0]", target.x, x);
    ReadNumber(value[1], place + "[1]", target.y, y);
}

void Fields::Take(std::string_view name, double& target, NumberRange range) {
    if (const Json* value = Find(name)) ReadNumber(*value, PlaceOf(name), target, range);
}

void Fields::Take(std::string_view name, Point& target, NumberRange x, NumberRange y) {
    if (const Json* value = Find(name)) ReadPoint(*value, PlaceOf(name), target, x, y);
}

void Fields::Take(std::string_view name, std::vector<Point>& target, NumberRange x, NumberRange y,
                  std::size_t most) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    if (!value->is_array() || value->size() < 2 || value->size() > most) {
        Complain(name, "must be 2 to " + std::to_string(most) + " points, [[x, y], [x, y]]");
        return;
    }
    for (std::size_t index = 0; index < value->size(); ++index) {
        const std::string place = PlaceOf(name) + "[" + std::to_string(index) + "]";
        ReadPoint((*value)[index], place, target.emplace_back(), x, y);
    }
}

void Fields::Take(std::string_view name, std::string& target) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    if (!value->is_string()) {
        Complain(name, "must be a text in quotes");
        return;
    }
    const auto& text = value->get_ref<const std::string&>();
    const bool printable = std::ranges::none_of(
        text, [](char character) { return static_cast<unsigned char>(character) < ' '; });
    if (text.empty() || text.size() > kLongestName || !printable) {
        Complain(name, "must be 1 to " + std::to_string(kLongestName) + " characters");
        return;
    }
    target = text;
}

void Fields::Take(std::string_view name, std::uint64_t& target, std::uint64_t most) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    if (value->is_number_unsigned() && value->get<std::uint64_t>() <= most)
        target = value->get<std::uint64_t>();
    else
        Complain(name, "must be a whole number from 0 to " + std::to_string(most));
}

void Fields::TakeLines(std::string_view name, std::size_t most,
                       const std::function<std::string(const std::string&)>& read) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    if (!value->is_array()) return Complain(name, "must be a list, [ ... ]");
    if (value->size() > most)
        return Complain(name, "must have at most " + std::to_string(most) + " entries");
    for (std::size_t index = 0; index < value->size() && !mistake_.Found(); ++index) {
        const std::string place = PlaceOf(name) + "[" + std::to_string(index) + "]";
        const Json& line = (*value)[index];
        const std::string wrong = line.is_string() ? read(line.get_ref<const std::string&>())
                                                   : "must be a text in quotes";
        if (!wrong.empty()) mistake_.Note(place, wrong);
    }
}

void Fields::TakeObjectText(std::string_view name, std::string& target) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    if (!value->is_object()) return Complain(name, "must be an object, { ... }");
    target = value->dump();
}

void Fields::TakeObject(std::string_view name, const std::function<void(Fields&)>& read) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    Fields fields(*value, PlaceOf(name), mistake_);
    if (mistake_.Found()) return;
    read(fields);
    fields.End();
}

void Fields::TakeEach(std::string_view name, std::size_t most,
                      const std::function<void(Fields&)>& read) {
    const Json* value = Find(name);
    if (value == nullptr) return;
    if (!value->is_array()) {
        Complain(name, "must be a list, [ ... ]");
        return;
    }
    if (value->size() > most) {
        Complain(name, "must have at most " + std::to_string(most) + " entries");
        return;
    }
    for (std::size_t index = 0; index < value->size() && !mistake_.Found(); ++index) {
        const std::string place = PlaceOf(name) + "[" + std::to_string(index) + "]";
        Fields fields((*value)[index], place, mistake_);
        if (mistake_.Found()) return;
        read(fields);
        fields.End();
    }
}

void Fields::End() {
    if (!object_.is_object()) return;
    for (const auto& [name, value] : object_.items()) {
        if (known_.contains(name)) continue;
        mistake_.Note(place_, "there is no field " + Quoted(name));
    }
}

}  // namespace zentro::world
