// What people say to a robot in everyday words, with the lines that say it here.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/called_names.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"
#include "model/statement.h"

namespace zentro {

namespace {

enum class Order : std::uint8_t { Ahead, Back, Left, Right, Stop, Slower, Faster, Blink, Again };

/// The words with which a line begins, in capitals, and what they want.
struct OrderRow {
    std::string_view words;
    Order order;
};

/// The longer ones first.
constexpr std::array kOrders{
    OrderRow{"DRIVE FORWARD", Order::Ahead},  OrderRow{"DRIVE FORWARDS", Order::Ahead},
    OrderRow{"DRIVE AHEAD", Order::Ahead},    OrderRow{"DRIVE STRAIGHT", Order::Ahead},
    OrderRow{"GO FORWARD", Order::Ahead},     OrderRow{"GO FORWARDS", Order::Ahead},
    OrderRow{"GO AHEAD", Order::Ahead},       OrderRow{"GO STRAIGHT", Order::Ahead},
    OrderRow{"MOVE FORWARD", Order::Ahead},   OrderRow{"MOVE FORWARDS", Order::Ahead},
    OrderRow{"FORWARD", Order::Ahead},        OrderRow{"FORWARDS", Order::Ahead},
    OrderRow{"MOTORS FORWARD", Order::Ahead}, OrderRow{"MOTORS ON", Order::Ahead},
    OrderRow{"DRIVE BACK", Order::Back},      OrderRow{"DRIVE BACKWARD", Order::Back},
    OrderRow{"DRIVE BACKWARDS", Order::Back}, OrderRow{"GO BACK", Order::Back},
    OrderRow{"GO BACKWARD", Order::Back},     OrderRow{"GO BACKWARDS", Order::Back},
    OrderRow{"MOVE BACK", Order::Back},       OrderRow{"MOVE BACKWARD", Order::Back},
    OrderRow{"MOVE BACKWARDS", Order::Back},  OrderRow{"BACK UP", Order::Back},
    OrderRow{"BACKWARD", Order::Back},        OrderRow{"BACKWARDS", Order::Back},
    OrderRow{"MOTORS BACKWARD", Order::Back}, OrderRow{"REVERSE", Order::Back},
    OrderRow{"TURN LEFT", Order::Left},       OrderRow{"GO LEFT", Order::Left},
    OrderRow{"DRIVE LEFT", Order::Left},      OrderRow{"ROTATE LEFT", Order::Left},
    OrderRow{"SPIN LEFT", Order::Left},       OrderRow{"LEFT", Order::Left},
    OrderRow{"TURN RIGHT", Order::Right},     OrderRow{"GO RIGHT", Order::Right},
    OrderRow{"DRIVE RIGHT", Order::Right},    OrderRow{"ROTATE RIGHT", Order::Right},
    OrderRow{"SPIN RIGHT", Order::Right},     OrderRow{"TURN AROUND", Order::Right},
    OrderRow{"TURN ROUND", Order::Right},     OrderRow{"RIGHT", Order::Right},
    OrderRow{"STOP ALL", Order::Stop},        OrderRow{"STOP DRIVING", Order::Stop},
    OrderRow{"STOP MOVING", Order::Stop},     OrderRow{"STOP EVERYTHING", Order::Stop},
    OrderRow{"STOP BOTH", Order::Stop},       OrderRow{"HALT", Order::Stop},
    OrderRow{"BRAKE", Order::Stop},           OrderRow{"SLOW DOWN", Order::Slower},
    OrderRow{"SLOWER", Order::Slower},        OrderRow{"SPEED UP", Order::Faster},
    OrderRow{"FASTER", Order::Faster},        OrderRow{"BLINK", Order::Blink},
    OrderRow{"FLASH", Order::Blink},          OrderRow{"START AGAIN", Order::Again},
    OrderRow{"START OVER", Order::Again},     OrderRow{"DO IT AGAIN", Order::Again},
    OrderRow{"DO AGAIN", Order::Again},       OrderRow{"GO TO START", Order::Again},
    OrderRow{"RESTART", Order::Again},        OrderRow{"DRIVE", Order::Ahead},
    OrderRow{"MOVE", Order::Ahead},           OrderRow{"GO", Order::Ahead},
};

/// The words of the line without those that say nothing to a board.
std::vector<std::string_view> WordsWithoutFillers(std::string_view statement) {
    constexpr std::array<std::string_view, 7> kFillers{"THE", "A",      "ROBOT", "CAR",
                                                       "AT",  "PLEASE", "BY"};
    std::vector<std::string_view> words;
    for (const std::string_view word : PiecesOf(statement)) {
        const bool isFiller = std::ranges::any_of(
            kFillers, [&](std::string_view filler) { return EqualsIgnoreCase(filler, word); });
        if (!isFiller) words.push_back(word);
    }
    return words;
}

/// How many words of the row begin the line; 0: another line does.
std::size_t CountMatched(const OrderRow& row, const std::vector<std::string_view>& words) {
    const std::vector<std::string_view> wanted = PiecesOf(row.words);
    if (wanted.size() > words.size()) return 0;
    const bool matches = std::ranges::equal(
        wanted,
        std::vector(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(wanted.size())),
        EqualsIgnoreCase);
    return matches ? wanted.size() : 0;
}

std::string MotorLine(const HintQuestion& question, int motor, std::string_view direction,
                      std::string_view speed) {
    return std::string(question.compilation.GetCommandText(Token::SetMotor)) + " " +
           std::to_string(motor) + ", " + NameOfValue(question, direction) + ", " +
           std::string(speed);
}

constexpr const char* kMiddleSpeed = "50";
constexpr std::string_view kForward = "F";
constexpr std::string_view kBackward = "B";

/// A line for each wheel.
Hint TwoWheels(const HintQuestion& question, std::string_view left, std::string_view right,
               std::string_view speed) {
    return MakeHint(question, MessageCode::BothWheels,
                    {MotorLine(question, 1, left, speed), MotorLine(question, 2, right, speed)});
}

/// The speed that the rest of the line names, or else a middle one. How far or how long cannot be
/// said in the same line.
std::string SpeedIn(const HintQuestion& question, const std::vector<std::string_view>& rest) {
    constexpr std::int32_t kFull = 100;
    if (rest.size() != 1) return kMiddleSpeed;
    const auto number = ParseNumber(rest.front());
    const bool isSpeed = number ? *number > 0 && *number <= kFull : IsKnownValue(question, rest[0]);
    return isSpeed ? std::string(rest.front()) : kMiddleSpeed;
}

Hint HintForOrder(const HintQuestion& question, Order order, const std::string& speed) {
    switch (order) {
        case Order::Ahead: return TwoWheels(question, kForward, kForward, speed);
        case Order::Back: return TwoWheels(question, kBackward, kBackward, speed);
        case Order::Left: return TwoWheels(question, kBackward, kForward, kMiddleSpeed);
        case Order::Right: return TwoWheels(question, kForward, kBackward, kMiddleSpeed);
        case Order::Stop:
            return RewriteStatement(
                question, std::string(question.compilation.GetCommandText(Token::StopMotors)));
        case Order::Slower: return MakeHint(question, MessageCode::SmallerSpeed, {});
        case Order::Faster: return MakeHint(question, MessageCode::LargerSpeed, {});
        case Order::Blink: return MakeHint(question, MessageCode::HowToBlink, {});
        case Order::Again: return MakeHint(question, MessageCode::HowToRepeat, {});
    }
    return {};
}

/// DRIVE FORWARD 60, TURN LEFT, STOP THE ROBOT
std::optional<Hint> FindEverydayOrder(const HintQuestion& question) {
    const std::vector<std::string_view> words = WordsWithoutFillers(StatementOf(question.line));
    if (words.empty() || SymbolOf(question, words[0]) != nullptr) return std::nullopt;
    const bool stopsRobot = words.size() == 1 && EqualsIgnoreCase(words[0], "STOP") &&
                            !EqualsIgnoreCase(StatementOf(question.line), "STOP");
    if (stopsRobot) return HintForOrder(question, Order::Stop, {});
    for (const OrderRow& row : kOrders) {
        const std::size_t matched = CountMatched(row, words);
        if (matched == 0) continue;
        const std::vector rest(words.begin() + static_cast<std::ptrdiff_t>(matched), words.end());
        // One word alone may begin another order, of which nothing is known here.
        const bool isSure = matched > 1 || rest.empty() ||
                            (rest.size() == 1 && IsKnownValue(question, rest.front()));
        if (!isSure) continue;
        return HintForOrder(question, row.order, SpeedIn(question, rest));
    }
    return std::nullopt;
}

/// SET BOTH MOTORS, FORWARD, 60; SET MOTORS 60; MOTORS BACKWARD 40
std::optional<Hint> FindBothMotors(const HintQuestion& question) {
    const std::string forward = NameOfValue(question, kForward);
    const std::string backward = NameOfValue(question, kBackward);
    bool hasMotors = false;
    int numbers = 0;
    std::string_view direction = kForward;
    std::string_view speed = kMiddleSpeed;
    for (const std::string_view word : PiecesOf(StatementOf(question.line))) {
        if (EqualsIgnoreCase(word, "SET") || EqualsIgnoreCase(word, "BOTH") ||
            EqualsIgnoreCase(word, "ALL") || EqualsIgnoreCase(word, "THE") ||
            EqualsIgnoreCase(word, forward) || EqualsIgnoreCase(word, "TO") ||
            EqualsIgnoreCase(word, "ON"))
            continue;
        if (EqualsIgnoreCase(word, "MOTORS")) {
            hasMotors = true;
        } else if (EqualsIgnoreCase(word, backward)) {
            direction = kBackward;
        } else if (IsKnownValue(question, word)) {
            speed = word;
            ++numbers;
        } else {
            return std::nullopt;
        }
    }
    if (!hasMotors || numbers > 1) return std::nullopt;
    return TwoWheels(question, direction, direction, speed);
}

bool IsVariable(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable;
}

/// RESET Count, Count UP
std::optional<Hint> FindCounted(const HintQuestion& question) {
    const std::vector<std::string_view> words = PiecesOf(StatementOf(question.line));
    if (words.size() != 2) return std::nullopt;
    const auto is = [&](std::size_t index, std::string_view meant) {
        return EqualsIgnoreCase(words[index], meant);
    };
    const auto text = [&](Token token) {
        return std::string(question.compilation.GetCommandText(token));
    };
    const bool resets = is(0, "RESET") || is(0, "CLEAR") || is(0, "ZERO");
    if (resets && IsVariable(question, words[1]))
        return RewriteStatement(question, std::string(words[1]) + " " + text(Token::Equal) + " 0");
    if (!IsVariable(question, words[0]) || (!is(1, "UP") && !is(1, "DOWN"))) return std::nullopt;
    const Token step = is(1, "UP") ? Token::Increment : Token::Decrement;
    return RewriteStatement(question, text(step) + " " + std::string(words[0]));
}

/// SET LEDS, ON, ON: a comma that stands right behind the statement's words.
std::optional<Hint> FindCommaBehindWords(const HintQuestion& question) {
    std::string statement(StatementOf(question.line));
    const std::size_t comma = statement.find(',');
    if (comma == std::string::npos || comma == 0) return std::nullopt;
    const Command* entry = question.compilation.FindCommand(statement.substr(0, comma));
    const bool isWhole = entry != nullptr && FindValueStatement(entry->id) != nullptr &&
                         EqualsIgnoreCase(entry->command, TrimBlanks(statement.substr(0, comma)));
    if (!isWhole) return std::nullopt;
    statement.erase(comma, 1);
    return RewriteStatement(question, statement);
}

/// The statement's line with or without SET before it.
struct SetLine {
    const Command* entry = nullptr;
    const Statement* statement = nullptr;
    std::string text;
};

std::optional<SetLine> SetLineOf(const HintQuestion& question) {
    const std::string typed(StatementOf(question.line));
    for (const std::string& text : {typed, "SET " + typed}) {
        const Command* entry = question.compilation.FindCommand(text);
        const Statement* statement = entry == nullptr ? nullptr : FindValueStatement(entry->id);
        if (statement != nullptr && StartsWithIgnoreCase(entry->command, "SET "))
            return SetLine{entry, statement, text};
    }
    return std::nullopt;
}

bool AllFit(const HintQuestion& question, const Statement& statement,
            const std::vector<std::string>& values) {
    const auto slots = statement.Values();
    if (values.size() != slots.size()) return false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!Fits(question, slots[i], values[i])) return false;
    }
    return true;
}

struct SaidValues {
    std::vector<std::string> values;
    bool hasOwnWords = false;  ///< such as HIGH and TO
    bool isGuessed = false;    ///< some of it was not said
};

/// The values without the small words between them; HIGH is ON, and a way that is not said is
/// FORWARD.
SaidValues ValuesSaid(const HintQuestion& question, const SetLine& line) {
    constexpr std::array<std::string_view, 6> kJoints{"TO", "AT", "=", "IS", "WITH", "SPEED"};
    const std::string on(question.compilation.GetCommandText(Token::On));
    const std::string off(question.compilation.GetCommandText(Token::Off));
    SaidValues said;
    std::vector<std::string>& values = said.values;
    for (const std::string_view word :
         PiecesOf(std::string_view(line.text).substr(line.entry->command.size()))) {
        const auto is = [&](std::string_view meant) { return EqualsIgnoreCase(word, meant); };
        const bool isJoint = std::ranges::any_of(kJoints, is);
        said.hasOwnWords = said.hasOwnWords || isJoint || is("HIGH") || is("LOW");
        if (!isJoint) values.emplace_back(is("HIGH") ? on : is("LOW") ? off : word);
    }
    const auto slots = line.statement->Values();
    if (slots.back().mostMeant > 0 && !values.empty()) {
        const bool isOn = EqualsIgnoreCase(values.back(), on);
        said.isGuessed = isOn || EqualsIgnoreCase(values.back(), off);
        if (said.isGuessed) values.back() = isOn ? kMiddleSpeed : "0";
    }
    const bool lacksWay = slots.size() == 3 && values.size() == 2 && slots[1].name == "direction";
    if (lacksWay) values.insert(values.begin() + 1, NameOfValue(question, kForward));
    said.isGuessed = said.isGuessed || lacksWay;
    return said;
}

/// MOTOR 1, FORWARD, 60; SET SERVO 1 TO 45; SET PORT 1 HIGH
std::optional<Hint> FindSetValues(const HintQuestion& question) {
    const auto line = SetLineOf(question);
    if (!line) return std::nullopt;
    const SaidValues said = ValuesSaid(question, *line);
    const bool lacksSet = line->text.size() != StatementOf(question.line).size();
    if ((!lacksSet && !said.hasOwnWords) || !AllFit(question, *line->statement, said.values))
        return std::nullopt;
    std::string instead(line->entry->command);
    for (std::size_t i = 0; i < said.values.size(); ++i)
        instead.append(i == 0 ? " " : ", ").append(said.values[i]);
    Hint hint = RewriteStatement(question, instead);
    if (said.isGuessed) hint.fix.reset();
    return hint;
}

/// LED ON, SET LIGHTS OFF, TURN ON LED 1
std::optional<Hint> FindLights(const HintQuestion& question) {
    if (question.code != MessageCode::UnknownStatement) return std::nullopt;
    const auto isOne = [](std::string_view word, std::initializer_list<std::string_view> meant) {
        return std::ranges::any_of(
            meant, [&](std::string_view one) { return EqualsIgnoreCase(one, word); });
    };
    const std::string on(question.compilation.GetCommandText(Token::On));
    const std::string off(question.compilation.GetCommandText(Token::Off));
    bool isLight = false;
    std::string_view state;
    std::string_view side;
    for (const std::string_view word : PiecesOf(StatementOf(question.line))) {
        if (isOne(word, {"SET", "TURN", "SWITCH", "THE", "BOTH", "ALL", "TO", "="})) continue;
        if (isOne(word, {"LED", "LEDS", "LIGHT", "LIGHTS", "LAMP", "LAMPS"})) {
            isLight = true;
        } else if (isOne(word, {on, off}) && state.empty()) {
            state = word;
        } else if (isOne(word, {"1", "2", "LEFT", "RIGHT"}) && side.empty()) {
            side = word;
        } else {
            return std::nullopt;
        }
    }
    if (!isLight || state.empty()) return std::nullopt;
    const bool isOn = EqualsIgnoreCase(state, on);
    if (!side.empty() && !isOn) return std::nullopt;  // what the other one does is not said
    std::string left = isOn ? on : off;
    std::string right = left;
    if (isOne(side, {"1", "LEFT"})) right = off;
    if (isOne(side, {"2", "RIGHT"})) left = off;
    std::string instead(question.compilation.GetCommandText(Token::SetLeds));
    instead.append(" ").append(left).append(", ").append(right);
    Hint hint = RewriteStatement(question, instead);
    if (!side.empty())
        hint.text = MakeHint(question, MessageCode::LightsTogether, {ToUtf8(instead)}).text;
    return hint;
}

/// SHOW Count, PRINT 5
std::optional<Hint> FindShown(const HintQuestion& question) {
    const std::vector<std::string_view> words = PiecesOf(StatementOf(question.line));
    if (words.size() != 2) return std::nullopt;
    const bool shows = EqualsIgnoreCase(words[0], "SHOW") || EqualsIgnoreCase(words[0], "PRINT") ||
                       EqualsIgnoreCase(words[0], "OUTPUT");
    const Statement* display = FindValueStatement(Token::Display);
    if (!shows || !Fits(question, display->Values()[0], words[1])) return std::nullopt;
    return RewriteStatement(question,
                            std::string(question.compilation.GetCommandText(Token::Display)) + " " +
                                std::string(words[1]));
}

}  // namespace

std::optional<Hint> FindEverydayLine(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::UnknownStatement ||
                         question.code == MessageCode::WrongArgumentCount ||
                         question.code == MessageCode::ConstantAsStatement;
    if (!isAsked) return std::nullopt;
    for (const auto find : {FindCommaBehindWords, FindLights, FindSetValues, FindBothMotors,
                            FindCounted, FindShown, FindEverydayOrder}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
