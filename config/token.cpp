#include "config/token.h"

#include <array>

#include "config/name_index.h"
#include "config/text.h"

namespace zentro {

namespace {

constexpr std::array<TokenRow, kTokenCount - 2> kTokens{{
    {Token::DefineByte, "D1"},
    {Token::DefineWord, "D2"},
    {Token::DefineConstant, "D3"},
    {Token::DefineTable, "D4"},
    {Token::DefineFlag, "D5"},
    {Token::DefinePointer, "D6"},
    {Token::DefineRoutine, "D7"},
    {Token::DefineEvent, "D8"},
    {Token::Include, "CD1"},
    {Token::SharedParameters, "CO1"},
    {Token::BeginProgram, "S1"},
    {Token::EndRoutine, "S2"},
    {Token::EndProgram, "S3"},
    {Token::EndTable, "S4"},
    {Token::EndIf, "S5"},
    {Token::EndWhile, "S6"},
    {Token::Call, "S7"},
    {Token::SetMotorFromVariables, "S8"},
    {Token::StopSound, "S9"},
    {Token::EmergencyStop, "S10"},
    {Token::PowerOff, "s11"},
    {Token::Escape, "s12"},
    {Token::DisableEvents, "s13"},
    {Token::EnableEvents, "s14"},
    {Token::WriteEeprom, "s15"},
    {Token::OnErrorCall, "s16"},
    {Token::Write, "s17"},
    {Token::StopMotors, "s18"},
    {Token::SetMotor, "s19"},
    {Token::DeferEvents, "s20"},
    {Token::Push, "s21"},
    {Token::CalibrateJoystick, "s22"},
    {Token::SetPort, "s23"},
    {Token::DisplayHex, "s24"},
    {Token::Display, "s25"},
    {Token::SetLeds, "s26"},
    {Token::SetServo, "s27"},
    {Token::SetServoPercent, "s28"},
    {Token::PlaySound, "s29"},
    {Token::PlayTune, "s30"},
    {Token::Return, "s31"},
    {Token::Increment, "s32"},
    {Token::Decrement, "s33"},
    {Token::Wait, "s34"},
    {Token::SetEvent, "s35"},
    {Token::ClearEvent, "s36"},
    {Token::RaiseEvent, "s37"},
    {Token::If, "s38"},
    {Token::Else, "s39"},
    {Token::Repeat, "s40"},
    {Token::Select, "s41"},
    {Token::CaseElse, "s42"},
    {Token::Case, "s43"},
    {Token::EndSelect, "s44"},
    {Token::Loop, "s45"},
    {Token::EndLoop, "s46"},
    {Token::EndEvent, "S47"},
    {Token::Until, "S48"},
    {Token::While, "S49"},
    {Token::RoutineCall, "F0"},
    {Token::Battery, "F1"},
    {Token::Receive, "F2"},
    {Token::ReadEeprom, "F3"},
    {Token::AddressOf, "F4"},
    {Token::Pop, "F5"},
    {Token::Joystick, "F6"},
    {Token::Digital, "F7"},
    {Token::Analog, "F8"},
    {Token::Timed, "F9"},
    {Token::PulseLength, "F10"},
    {Token::ProgramNumber, "F11"},
    {Token::Button, "F12"},
    {Token::PulseCount, "F13"},
    {Token::TimedPulseCount, "F14"},
    {Token::ToByte, "F15"},
    {Token::LowByte, "F16"},
    {Token::ToWord, "F17"},
    {Token::Random, "F20"},
    {Token::Complement, "F21"},
    {Token::Clock, "F22"},
    {Token::Not, "F23"},
    {Token::ReceiveWord, "F24"},
    {Token::ReadEepromWord, "F25"},
    {Token::LastError, "F26"},
    {Token::Stick, "F27"},
    {Token::Read, "F28"},
    {Token::Plus, "M1"},
    {Token::Equal, "M2"},
    {Token::Divide, "M3"},
    {Token::Minus, "M4"},
    {Token::Multiply, "M5"},
    {Token::Mod, "M6"},
    {Token::And, "M7"},
    {Token::Or, "M8"},
    {Token::LessOrEqual, "M9"},
    {Token::GreaterOrEqual, "M10"},
    {Token::Less, "M11"},
    {Token::Greater, "M12"},
    {Token::NotEqual, "M13"},
    {Token::EqualOrGreater, "M14"},
    {Token::EqualOrLess, "M15"},
    {Token::GreaterOrLess, "M16"},
    {Token::KeywordList, "R0"},
    {Token::Then, "R1"},
    {Token::Reserve, "R2"},
    {Token::ReturnsByte, "R3"},
    {Token::ReturnsWord, "R4"},
    {Token::ReturnsFlag, "R5"},
    {Token::ReturnsPointer, "R6"},
    {Token::ParameterByte, "R7"},
    {Token::ParameterWord, "R8"},
    {Token::ParameterFlag, "R9"},
    {Token::ParameterPointer, "R10"},
    {Token::DefinePrefix, "R11"},
    {Token::EndPrefix, "R12"},
    {Token::True, "C1"},
    {Token::False, "C2"},
    {Token::On, "C3"},
    {Token::Off, "C4"},
}};

constexpr std::size_t RowOf(Token token) {
    return static_cast<std::size_t>(token) - 2;
}

constexpr bool RowsFollowTheEnumeration() {
    for (std::size_t row = 0; row < kTokens.size(); ++row) {
        if (RowOf(kTokens[row].token) != row) return false;
    }
    return true;
}
static_assert(RowsFollowTheEnumeration(), "every token needs one row, in order");

}  // namespace

std::span<const TokenRow> TokenTable() {
    return kTokens;
}

std::string_view TokenText(Token token) {
    return token == Token::None || token == Token::Other ? std::string_view()
                                                         : kTokens[RowOf(token)].text;
}

Token TokenFromText(std::string_view text) {
    static const NameIndex kByText = [] {
        NameIndex index;
        for (std::uint32_t row = 0; row < kTokens.size(); ++row) {
            index.Add(NameKey(kTokens[row].text).hash, row);
        }
        return index;
    }();
    const std::uint32_t row = kByText.Find(NameKey(text).hash, [&](std::uint32_t place) {
        return EqualsIgnoreCase(kTokens[place].text, text);
    });
    return row == NameIndex::kNone ? Token::Other : kTokens[row].token;
}

TokenFamily FamilyOf(std::string_view tokenText) {
    if (tokenText.empty()) return TokenFamily::Unknown;
    switch (FoldCase(tokenText.front())) {
        case 'D': return TokenFamily::Declaration;
        case 'S': return TokenFamily::Statement;
        case 'F': return TokenFamily::Function;
        case 'M': return TokenFamily::Operator;
        case 'R': return TokenFamily::Reserved;
        case 'C':
            return tokenText.size() > 1 && IsDigit(tokenText[1]) ? TokenFamily::Constant
                                                                 : TokenFamily::Directive;
        default: return TokenFamily::Unknown;
    }
}

TokenFamily FamilyOf(Token token) {
    return FamilyOf(TokenText(token));
}

}  // namespace zentro
