#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace zentro {

/// What an entry of the configuration file means to the program. The words are the file's, the
/// meaning is fixed here, and the fixed short text ("S4", "M2") ties the two together.
enum class Token : std::uint8_t {
    None,   ///< no entry
    Other,  ///< an entry that this version of the program has no use for

    // Declarations
    DefineByte,
    DefineWord,
    DefineConstant,
    DefineTable,
    DefineFlag,
    DefinePointer,
    DefineRoutine,
    DefineEvent,

    // Directives
    Include,
    SharedParameters,

    // Statements and block ends
    BeginProgram,
    EndRoutine,
    EndProgram,
    EndTable,
    EndIf,
    EndWhile,
    Call,
    SetMotorFromVariables,
    StopSound,
    EmergencyStop,
    PowerOff,
    Escape,
    DisableEvents,
    EnableEvents,
    WriteEeprom,
    OnErrorCall,
    Write,
    StopMotors,
    SetMotor,
    DeferEvents,
    Push,
    CalibrateJoystick,
    SetPort,
    DisplayHex,
    Display,
    SetLeds,
    SetServo,
    SetServoPercent,
    PlaySound,
    PlayTune,
    Return,
    Increment,
    Decrement,
    Wait,
    SetEvent,
    ClearEvent,
    RaiseEvent,
    If,
    Else,
    Repeat,
    Select,
    CaseElse,
    Case,
    EndSelect,
    Loop,
    EndLoop,
    EndEvent,
    Until,
    While,

    // Functions
    RoutineCall,
    Battery,
    Receive,
    ReadEeprom,
    AddressOf,
    Pop,
    Joystick,
    Digital,
    Analog,
    Timed,
    PulseLength,
    ProgramNumber,
    Button,
    PulseCount,
    TimedPulseCount,
    ToByte,
    LowByte,
    ToWord,
    Random,
    Complement,
    Clock,
    Not,
    ReceiveWord,
    ReadEepromWord,
    LastError,
    Stick,
    Read,

    // Operators and comparisons
    Plus,
    Equal,
    Divide,
    Minus,
    Multiply,
    Mod,
    And,
    Or,
    LessOrEqual,
    GreaterOrEqual,
    Less,
    Greater,
    NotEqual,
    EqualOrGreater,
    EqualOrLess,
    GreaterOrLess,

    // Reserved words
    KeywordList,
    Then,
    Reserve,
    ReturnsByte,
    ReturnsWord,
    ReturnsFlag,
    ReturnsPointer,
    ParameterByte,
    ParameterWord,
    ParameterFlag,
    ParameterPointer,
    DefinePrefix,
    EndPrefix,

    // Constants that statements name
    True,
    False,
    On,
    Off,

    Count,
};

inline constexpr std::size_t kTokenCount = static_cast<std::size_t>(Token::Count);

/// The kind of entry, told by the first letter of its fixed text.
enum class TokenFamily : std::uint8_t {
    Declaration,
    Directive,
    Statement,
    Function,
    Operator,
    Reserved,
    Constant,  ///< "C" and a digit; the file may hold any number of them
    Unknown,
};

struct TokenRow {
    Token token;
    std::string_view text;
};

/// Every token that the program relies on, with its fixed text, in the order of the enumeration.
std::span<const TokenRow> TokenTable();

/// The fixed text of a token: "S4". Empty for None and Other.
std::string_view TokenText(Token token);

/// The token with the fixed text, whose letter case does not matter; Other when there is none.
Token TokenFromText(std::string_view text);

TokenFamily FamilyOf(std::string_view tokenText);
TokenFamily FamilyOf(Token token);

}  // namespace zentro
