#include "advice/line_values.h"

#include "model/value_bounds.h"

namespace zentro {

std::optional<std::int32_t> ValueOf(const LineElement& element) {
    if (!element.IsConstant()) return std::nullopt;
    return NumberOf(element.constant->value);
}

std::optional<std::int32_t> NumberAssigned(const Compilation& compilation, const SourceLine& line) {
    const auto elements = compilation.ElementsOf(line);
    if (line.token != Token::Equal || elements.size() != 2) return std::nullopt;
    return ValueOf(elements[1]);
}

bool IsConditionLine(Token token) {
    return token == Token::If || token == Token::While || token == Token::Until;
}

bool IsEquality(Token comparison) {
    return comparison == Token::Equal || comparison == Token::NotEqual ||
           comparison == Token::GreaterOrLess;
}

std::optional<ComparedSides> SidesOf(const Compilation& compilation, const SourceLine& line) {
    if (!IsConditionLine(line.token)) return std::nullopt;
    const auto elements = compilation.ElementsOf(line);
    if (elements.size() != 3 || elements[1].elementClass != ElementClass::Comparison)
        return std::nullopt;
    return ComparedSides{&elements[0], &elements[2], elements[1].comparison};
}

std::optional<ComparedWithNumber> WithNumber(const ComparedSides& sides) {
    const auto first = ValueOf(*sides.first);
    const auto second = ValueOf(*sides.second);
    if (first.has_value() == second.has_value()) return std::nullopt;
    if (first) return ComparedWithNumber{sides.second, *first};
    return ComparedWithNumber{sides.first, *second};
}

BlockRole InnerRoleOf(const SourceLine& line) {
    const Statement* statement = FindStatement(line.token);
    const bool isInner = statement != nullptr && IsInner(statement->edge.block);
    return isInner ? statement->edge.role : BlockRole::None;
}

}  // namespace zentro
