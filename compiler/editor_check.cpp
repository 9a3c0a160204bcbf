#include "compiler/editor_check.h"

#include <algorithm>
#include <map>

#include "advice/advice.h"
#include "compiler/consequences.h"
#include "compiler/load_source.h"
#include "frontend/parse_source_line.h"
#include "hints/line_hints.h"

namespace zentro {

namespace {

bool EndsDeclaredBlock(Token token) {
    return token == Token::EndTable || token == Token::EndRoutine || token == Token::EndEvent;
}

bool OpensBlock(Token token) {
    return token == Token::DefineTable || token == Token::DefineRoutine ||
           token == Token::DefineEvent || token == Token::BeginProgram;
}

/// The lines that the statement pass leaves out, by their numbers less 1.
std::vector<bool> LinesToSkip(const Compilation& compilation) {
    std::vector<bool> skipped(compilation.sourceLines.size(), false);
    bool isInBlock = false;
    std::size_t lost = 0;  // the number of a header that was not understood; 0: none
    for (const SourceLine& line : compilation.sourceLines) {
        const auto number = static_cast<std::size_t>(line.lineNumber);
        const bool isMistyped = line.token == Token::DefinePrefix || line.token == Token::EndPrefix;
        if (isMistyped) skipped[number - 1] = true;  // all is said about it
        if (EndsDeclaredBlock(line.token)) {
            // Without its header a block makes no sense from its first line to its end.
            if (lost != 0)
                std::fill(skipped.begin() + static_cast<std::ptrdiff_t>(lost),
                          skipped.begin() + static_cast<std::ptrdiff_t>(number), true);
            isInBlock = false;
            lost = 0;
        } else if (OpensBlock(line.token)) {
            isInBlock = true;
            lost = 0;
        } else if (line.token == Token::EndProgram) {
            isInBlock = false;
        } else if (!isInBlock && lost == 0 && IsLostDeclaration(compilation, line)) {
            lost = number;
        }
    }
    return skipped;
}

/// How many lines the statement pass reads. When reading the declarations stopped early, the line
/// at which it stopped is told already. A table that is not ended takes everything for its data, so
/// nothing is read behind its header.
std::size_t LinesToParse(const Compilation& compilation, bool wasReadToTheEnd) {
    const auto& lines = compilation.sourceLines;
    std::size_t count = lines.size();
    if (!wasReadToTheEnd && count > 0) --count;
    for (std::size_t i = count; i > 0; --i) {
        const Token token = lines[i - 1].token;
        if (token == Token::DefineTable) return i;
        const bool isOther = token == Token::DefineRoutine || token == Token::DefineEvent;
        if (isOther || EndsDeclaredBlock(token)) break;
    }
    return count;
}

void ParseStatements(Compilation& compilation, std::size_t count) {
    const std::vector<bool> skipped = LinesToSkip(compilation);
    compilation.states.Clear();
    for (std::size_t i = 0; i < count; ++i) {
        if (!skipped[i]) ParseSourceLine(compilation, compilation.sourceLines[i]);
        compilation.environment.progress.LetEventsRun();
    }
}

void Count(IncludedMistakes& mistakes, const PostedMessage& message) {
    const bool isError = message.severity == Severity::Error;
    const bool isFirst = isError ? mistakes.errors == 0 : mistakes.errors + mistakes.warnings == 0;
    if (isFirst) mistakes.first = message;
    ++(isError ? mistakes.errors : mistakes.warnings);
}

/// Counts each message at every line through which its file came into the program.
std::vector<IncludedMistakes> MistakesOfIncludedFiles(const Compilation& compilation,
                                                      const ConsequenceFilter& filter) {
    std::map<std::int32_t, IncludedMistakes> byLine;
    for (const auto& [lineNo, message] : filter.Posted()) {
        if (message.severity != Severity::Error && message.severity != Severity::Warning) continue;
        const SourceFile* file = compilation.GetSourceLine(lineNo).file;
        while (file->includingLineNo != 0) {
            const auto [entry, isNew] = byLine.try_emplace(file->includingLineNo);
            if (isNew) {
                entry->second.place = XrefOf(compilation, file->includingLineNo);
                entry->second.fileName = file->name;
            }
            Count(entry->second, message);
            file = compilation.GetSourceLine(file->includingLineNo).file;
        }
    }
    std::vector<IncludedMistakes> all;
    all.reserve(byLine.size());
    for (auto& [lineNo, mistakes] : byLine)
        all.push_back(std::move(mistakes));
    return all;
}

}  // namespace

std::vector<IncludedMistakes> CheckForEditor(Compilation& compilation, const ProgramFiles& files) {
    ConsequenceFilter filter(compilation);
    LineHints hints(compilation);
    compilation.diagnostics.SetFilter(&filter);
    compilation.diagnostics.SetHints(&hints);
    compilation.diagnostics.StartCompile(files.sourceFileName);
    const bool isOpen = LoadSourceFiles(compilation, files);
    const bool wasReadToTheEnd = isOpen && compilation.states.Current() != CompileState::Aborted;
    filter.DeclarationsRead(wasReadToTheEnd);
    const std::size_t count = LinesToParse(compilation, wasReadToTheEnd);
    ParseStatements(compilation, count);
    if (wasReadToTheEnd && !filter.HasLostEnd()) PostOpenBlock(compilation);
    if (!compilation.mainBlockSeen && count == compilation.sourceLines.size())
        compilation.diagnostics.PostError(MessageCode::NoProgram, nullptr);
    const bool isWhole = wasReadToTheEnd && compilation.diagnostics.ObjectCodeIsPossible() &&
                         compilation.diagnostics.ErrorCount() == 0;
    if (compilation.wantsAdvice && isWhole) GiveAdvice(compilation);
    compilation.diagnostics.SetFilter(nullptr);
    compilation.diagnostics.SetHints(nullptr);
    return MistakesOfIncludedFiles(compilation, filter);
}

}  // namespace zentro
