#include <vector>

#include "config/text.h"
#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"

namespace zentro {

namespace {

void AddArgument(Compilation& compilation, SourceLine& line, std::string_view text,
                 const StatementValue& expected) {
    switch (expected.kind) {
        case StatementValue::Kind::Operand:
        case StatementValue::Kind::Constant:
            AddOperand(compilation, text, line, ExpectationOf(expected));
            break;
        case StatementValue::Kind::Variable: AddChangedVariable(compilation, text, line); break;
        case StatementValue::Kind::EventHandler: AddEventHandler(compilation, text, line); break;
    }
}

}  // namespace

void ParsePlainStatement(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    line.purpose = Purpose::Statement;
    if (!arguments.empty()) compilation.diagnostics.PostError(MessageCode::RestIgnored, &line);
}

void ParseArguments(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    line.purpose = Purpose::Statement;
    const auto expected = FindStatement(line.token)->Values();
    if (arguments.starts_with('(')) {
        compilation.diagnostics.PostError(MessageCode::ArgumentsInParentheses, &line);
        return;
    }
    if (RefuseCall(compilation, arguments, line)) return;
    const std::vector<std::string_view> items = SplitCommaList(arguments);
    if (items.size() != expected.size()) {
        compilation.diagnostics.PostError(MessageCode::WrongArgumentCount, &line);
        return;
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        AddArgument(compilation, line, items[i], expected[i]);
    }
}

void ParseUnsupported(Compilation& compilation, SourceLine& line, std::string_view) {
    if (line.token != Token::SetMotorFromVariables) line.purpose = Purpose::Statement;
    compilation.diagnostics.PostError(MessageCode::NotSupported, &line);
}

}  // namespace zentro
