#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zentro {

/// The messages of the compiler by their numbers: 24 is "E24" in the configuration file, which
/// holds the texts and severities. Each number from the first of a group to its end is a message,
/// unless it is called unused, so a new one stands before the end of its group.
enum class MessageCode : std::uint16_t {
    StageFailed = 0,   ///< the stage found errors
    BlockOutside = 1,  ///< outside program, routine and event; ELSE or CASE with nothing open
    TableInTable = 2,
    TableInBlock = 3,
    RoutineInBlock = 4,
    ProgramInBlock = 5,
    SecondProgram = 6,
    NothingToEnd = 7,
    IfNotEnded = 8,
    WhileNotEnded = 9,
    RepeatNotEnded = 10,
    SelectNotEnded = 11,
    TableNotEnded = 12,
    RoutineNotEnded = 13,
    ProgramNotEnded = 14,
    UnknownStatement = 15,
    EqualSignExpected = 16,
    FunctionAsStatement = 17,
    ThenExpected = 18,
    ConditionIncomplete = 19,
    UnknownReturnType = 20,
    ParameterListNotClosed = 21,
    NotUnderstood = 22,
    ConstantWithoutValue = 23,
    TypeMismatch = 24,
    DuplicateName = 25,
    NoProgram = 26,
    ConstantAsStatement = 27,
    Unused28 = 28,
    UnknownComparison = 29,
    UnknownParameterType = 30,
    WrongArgumentCount = 31,
    Unused32 = 32,
    UnknownOperator = 33,
    UnexpectedText = 34,  ///< text where none may stand, or none where some must
    Unused35 = 35,
    NothingToReturn = 36,
    NotACondition = 37,
    NotAConstant = 38,
    NotSupported = 39,
    PointerWithValue = 40,
    InvalidName = 41,
    CallWithoutName = 42,
    NameMissing = 43,
    Unused44 = 44,
    CaseWithoutSelect = 45,
    Unused46 = 46,
    SelectNeedsByteOrWord = 47,
    UnknownRoutine = 48,
    BlankInCalledName = 49,
    ParenthesisNotClosed = 50,
    LoopNotEnded = 51,
    ConstantNeeded = 52,
    ValueOutOfRange = 53,
    EventNotEnded = 54,
    EventWithParameters = 55,
    Unused56 = 56,
    Unused57 = 57,
    UnknownCall = 58,
    UnknownLabel = 59,
    FileNotOpened = 60,
    IncludedTooDeep = 61,
    NameTooShort = 62,
    KeywordAsValue = 63,
    UnknownName = 64,
    PointerAssigned = 65,
    ReturnOutsideRoutine = 66,
    ArgumentsInParentheses = 67,
    ValueNotAllowed = 68,
    TargetNotAVariable = 69,
    NameReserved = 70,
    LabelTwice = 71,
    TableEntryMissing = 72,
    ElseMisplaced = 73,
    ProgramTooLarge = 74,
    CallInsideStatement = 75,
    TableEmpty = 76,
    DivisionByZero = 77,
    EndOfErrors,

    NoInitialValue = 500,
    Unused501 = 501,
    QuoteNotClosed = 502,
    RoutineEndReached = 503,
    ByteComparedWithWord = 504,
    LogicOnOneByte = 505,
    OperatorLine = 506,
    NeverRuns = 507,
    TextWithoutQuotes = 508,
    EventNotEndedBefore = 509,
    RestIgnored = 510,
    NothingOpenToEnd = 511,
    BeforeFirstCase = 512,
    CommaMissing = 513,         ///< values of a table stand together
    CharacterNotOnBoard = 514,  ///< a character that the board's character set lacks
    CharacterIgnored = 515,     ///< a character outside quotes that counts as a blank
    EndOfWarnings,

    LoadStarts = 1000,
    LoadEnds = 1001,
    SharedParametersOn = 1002,
    Unused1003 = 1003,
    ParseStarts = 1004,
    ParseEnds = 1005,
    GenerateStarts = 1006,
    GenerateEnds = 1007,
    AddressStarts = 1008,
    AddressEnds = 1009,
    WriteStarts = 1010,
    WriteEnds = 1011,
    RunEnds = 1012,
    SourceLineCount = 1013,
    ObjectLineCount = 1014,
    ProgramSize = 1015,
    EndOfProgress,

    NeededByteVariable = 2000,
    NeededWordVariable = 2001,
    NeededFlagVariable = 2002,
    NeededPointerVariable = 2003,
    NeededTable = 2004,
    NeededRoutine = 2005,
    NeededEvent = 2006,
    NeededConstant = 2007,
    Unused2008 = 2008,
    FoundByteVariable = 2009,
    FoundWordVariable = 2010,
    FoundFlagVariable = 2011,
    FoundPointerVariable = 2012,
    FoundTable = 2013,
    FoundRoutine = 2014,
    FoundEvent = 2015,
    FoundLiteral = 2016,
    FoundConstant = 2017,
    TypographicQuotes = 2018,  ///< the hint behind the message of a line that holds some
    TypographicDashes = 2019,
    // The hints: %1 and so on stand for what they are about.
    NearWord = 2020,
    NearStatement = 2021,
    NearName = 2022,
    SeparateWords = 2023,
    LetterForDigit = 2024,
    CapitalLetter = 2025,
    CallIsMissing = 2026,
    OtherLanguage = 2027,
    WriteInstead = 2028,
    FractionWritten = 2029,
    NegativeWritten = 2030,
    TooLargeForByte = 2031,
    TooLargeToWrite = 2032,
    BlockStillOpen = 2033,
    ValuesOfStatement = 2034,
    ValuesOfRoutine = 2035,
    ValuesOfFunction = 2036,
    MissingAtEnd = 2037,
    ComparisonOfFlag = 2038,
    WordNeeded = 2039,
    EndOfHints,

    // The hints about how a line goes on, and of which kind its values are.
    FormOfStatement = 2060,
    NothingMore = 2061,
    OnlyInIf = 2062,
    LinesBelow = 2063,
    BothComparisons = 2064,
    EitherComparison = 2065,
    ComparisonsOfLoop = 2066,
    ConditionOfCall = 2067,
    OneSumALine = 2068,
    RoutineWithoutResult = 2069,
    RoutineWithResult = 2070,
    FunctionWithoutList = 2071,
    ByteOfWord = 2072,
    TextTooLong = 2073,
    LettersOfName = 2074,
    ResultMissing = 2075,
    EndOfLineHints,

    FirstOtherLanguageRow = 2100,  ///< words of other languages: see other_languages.h
    LastOtherLanguageRow = 2299,

    AlreadyOpen = 3002,     ///< a source file is opened a second time
    OutsideFailure = 3003,  ///< something outside the program failed: a disk, a folder
    EndOfFailures,
};

/// Whether something that the object code needs is missing after the message. The others, which
/// usually are warnings, leave a line that can be translated.
constexpr bool PreventsObjectCode(MessageCode code) {
    return code < MessageCode::NoInitialValue;
}

/// Every code of which the program needs the text.
std::span<const MessageCode> MessageCodes();

/// The code as the configuration file writes it: "E24".
std::string MessageCodeText(MessageCode code);

}  // namespace zentro
