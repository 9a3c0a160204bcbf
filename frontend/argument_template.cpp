#include "frontend/argument_template.h"

#include <algorithm>

namespace zentro {

namespace {

constexpr std::array<std::string_view, 2> kOneToTwo{"1", "2"};
constexpr std::array<std::string_view, 3> kOneToThree{"1", "2", "3"};
constexpr std::array<std::string_view, 4> kOneToFour{"1", "2", "3", "4"};
constexpr std::array<std::string_view, 6> kOneToSix{"1", "2", "3", "4", "5", "6"};
constexpr std::array<std::string_view, 2> kDirections{"F", "B"};
constexpr std::array<std::string_view, 2> kAxes{"X", "Y"};
constexpr std::array<std::string_view, 23> kEvents{"3",  "4",  "5",  "6",  "9",  "10", "11", "12",
                                                   "13", "14", "15", "16", "17", "18", "19", "20",
                                                   "21", "22", "23", "24", "25", "26", "27"};

using Kind = ArgumentTemplate::Kind;

constexpr ArgumentTemplate kAny{Kind::Operand, DataType::Any, {}};
constexpr ArgumentTemplate kByte{Kind::Operand, DataType::Byte, {}};
constexpr ArgumentTemplate kWord{Kind::Operand, DataType::Word, {}};
constexpr ArgumentTemplate kPointer{Kind::Operand, DataType::Pointer, {}};
constexpr ArgumentTemplate kTable{Kind::Operand, DataType::Table, {}};
constexpr ArgumentTemplate kVariable{Kind::Variable, DataType::Any, {}};
constexpr ArgumentTemplate kHandler{Kind::EventHandler, DataType::Any, {}};
constexpr ArgumentTemplate kValue{Kind::Constant, DataType::Byte, {}};

constexpr ArgumentTemplate OneOf(std::span<const std::string_view> values) {
    return {Kind::Constant, DataType::Byte, values};
}

constexpr std::array kStatements{
    StatementTemplate{Token::Write, 2, {kPointer, kAny}},
    StatementTemplate{Token::SetMotor, 3, {OneOf(kOneToFour), OneOf(kDirections), kByte}},
    StatementTemplate{Token::Push, 1, {kAny}},
    StatementTemplate{Token::CalibrateJoystick, 3, {OneOf(kOneToTwo), kValue, kValue}},
    StatementTemplate{Token::SetPort, 2, {OneOf(kOneToThree), kValue}},
    StatementTemplate{Token::DisplayHex, 1, {kByte}},
    StatementTemplate{Token::Display, 1, {kByte}},
    StatementTemplate{Token::SetLeds, 2, {kByte, kByte}},
    StatementTemplate{Token::SetServo, 3, {OneOf(kOneToThree), OneOf(kDirections), kByte}},
    StatementTemplate{Token::SetServoPercent, 3, {OneOf(kOneToThree), OneOf(kDirections), kByte}},
    StatementTemplate{Token::PlaySound, 2, {kValue, kValue}},
    StatementTemplate{Token::PlayTune, 1, {kTable}},
    StatementTemplate{Token::Increment, 1, {kVariable}},
    StatementTemplate{Token::Decrement, 1, {kVariable}},
    StatementTemplate{Token::Wait, 1, {kWord}},
    StatementTemplate{Token::SetEvent, 2, {OneOf(kEvents), kHandler}},
    StatementTemplate{Token::ClearEvent, 1, {OneOf(kEvents)}},
    StatementTemplate{Token::RaiseEvent, 1, {OneOf(kEvents)}},
};

constexpr std::array kFunctions{
    FunctionTemplate{Token::Battery, DataType::Byte},
    FunctionTemplate{Token::AddressOf, DataType::Pointer, 1, {kTable}},
    FunctionTemplate{Token::Pop, DataType::Any},
    FunctionTemplate{Token::Joystick, DataType::Byte, 2, {OneOf(kOneToTwo), OneOf(kAxes)}},
    FunctionTemplate{Token::Digital, DataType::Byte, 1, {OneOf(kOneToFour)}},
    FunctionTemplate{Token::Analog, DataType::Byte, 1, {OneOf(kOneToSix)}},
    FunctionTemplate{Token::Timed, DataType::Byte, 1, {OneOf(kOneToFour)}},
    FunctionTemplate{Token::PulseLength, DataType::Byte, 1, {OneOf(kOneToFour)}},
    FunctionTemplate{Token::ProgramNumber, DataType::Byte},
    FunctionTemplate{Token::Button, DataType::Byte, 1, {OneOf(kOneToSix)}},
    FunctionTemplate{Token::PulseCount, DataType::Byte, 1, {OneOf(kOneToFour)}},
    FunctionTemplate{Token::TimedPulseCount, DataType::Byte, 1, {OneOf(kOneToFour)}},
    FunctionTemplate{Token::ToByte, DataType::Byte, 1, {kWord}},
    FunctionTemplate{Token::LowByte, DataType::Byte, 1, {kWord}},
    FunctionTemplate{Token::ToWord, DataType::Word, 1, {kByte}},
    FunctionTemplate{Token::Random, DataType::Byte},
    FunctionTemplate{Token::Complement, DataType::Byte, 1, {kByte}},
    FunctionTemplate{Token::Clock, DataType::Word},
    FunctionTemplate{Token::Not, DataType::Flag, 1, {kAny}},
    FunctionTemplate{Token::Stick, DataType::Byte, 2, {OneOf(kOneToTwo), OneOf(kAxes)}},
    FunctionTemplate{Token::Read, DataType::Any, 1, {kPointer}},
};

template <typename Table>
auto FindRow(const Table& table, Token token) -> decltype(table.data()) {
    const auto* found = std::find_if(table.begin(), table.end(),
                                     [&](const auto& row) { return row.token == token; });
    return found == table.end() ? nullptr : found;
}

}  // namespace

const StatementTemplate* FindStatementTemplate(Token token) {
    return FindRow(kStatements, token);
}

const FunctionTemplate* SystemFunctionTemplate(Token token) {
    return FindRow(kFunctions, token);
}

}  // namespace zentro
