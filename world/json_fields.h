#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "world/geometry.h"

namespace zentro::world {

struct NumberRange {
    double least = 0;
    double most = 0;
};

/// The first mistake that was found in a file, and where.
class Mistake {
  public:
    void Note(const std::string& place, const std::string& wrong);
    bool Found() const { return !text_.empty(); }
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

/// Reads a JSON text. Nothing but a mistake if it is none, is too deep or names a field twice.
std::optional<nlohmann::json> ParseJson(std::string_view text, Mistake& mistake);

/// The fields of one JSON object. Each is taken at most once; what is left in the end has no
/// business there. A field that is absent leaves its target as it is, unless it is required.
class Fields {
  public:
    Fields(const nlohmann::json& object, std::string place, Mistake& mistake);

    bool Has(std::string_view name) const;
    void Require(std::string_view name);
    void Take(std::string_view name, double& target, NumberRange range);
    void Take(std::string_view name, Point& target, NumberRange x, NumberRange y);
    void Take(std::string_view name, std::vector<Point>& target, NumberRange x, NumberRange y,
              std::size_t most);
    void Take(std::string_view name, std::string& target);
    /// A whole number from 0 on.
    void Take(std::string_view name, std::uint64_t& target, std::uint64_t most);
    /// Calls `read` for each text of an array of at most `most`. It returns what is wrong with it.
    void TakeLines(std::string_view name, std::size_t most,
                   const std::function<std::string(const std::string&)>& read);
    /// The object of that name as a text of its own, to be read by somebody else.
    void TakeObjectText(std::string_view name, std::string& target);
    /// Calls `read` for the object of that name.
    void TakeObject(std::string_view name, const std::function<void(Fields&)>& read);
    /// Calls `read` for each object of an array of at most `most`.
    void TakeEach(std::string_view name, std::size_t most,
                  const std::function<void(Fields&)>& read);
    /// Notes the fields that nobody has taken.
    void End();

    void Complain(std::string_view name, const std::string& wrong);
    const std::string& Place() const { return place_; }

  private:
    const nlohmann::json* Find(std::string_view name);
    std::string PlaceOf(std::string_view name) const;
    void ReadNumber(const nlohmann::json& value, const std::string& place, double& target,
                    NumberRange range);
    void ReadPoint(const nlohmann::json& value, const std::string& place, Point& target,
                   NumberRange x, NumberRange y);

    const nlohmann::json& object_;
    std::string place_;
    Mistake& mistake_;
    std::set<std::string, std::less<>> known_;
};

}  // namespace zentro::world
