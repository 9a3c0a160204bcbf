#include "compiler/compile.h"

#include <algorithm>
#include <limits>

#include "advice/advice.h"
#include "codegen/generate_object_lines.h"
#include "compiler/listing.h"
#include "compiler/load_source.h"
#include "compiler/object_file.h"
#include "compiler/paths.h"
#include "compiler/resolve_labels.h"
#include "frontend/parse_source_line.h"
#include "hints/line_hints.h"

namespace zentro {

namespace {

/// Beyond this the stack and the variables of a running program may meet.
constexpr std::int32_t kLargeProgram = 21000;
/// The board's memory, in bytes.
constexpr std::int32_t kMemorySize = 32768;

/// A language whose messages are no errors does not make object code of lines that have none.
bool HasErrors(const Diagnostics& diagnostics) {
    return diagnostics.ErrorCount() > 0 || !diagnostics.ObjectCodeIsPossible();
}

/// A file that ends inside a table, a routine or an event is reported against a line of its own.
void CheckOpenAtEndOfFile(Compilation& compilation) {
    const CompileState state = compilation.states.Current();
    const bool isOpen = state == CompileState::Table || state == CompileState::Routine ||
                        state == CompileState::Event;
    if (!isOpen) return;
    constexpr std::int32_t kAfterTheLastLine = 9999;
    SourceLine end;
    end.fileLineNo = kAfterTheLastLine;
    compilation.diagnostics.PostError(
        state == CompileState::Event ? MessageCode::EventNotEnded : MessageCode::TableNotEnded,
        &end, "End of File:");
    ChangeCompileState(compilation, CompileState::Aborted, end);
}

bool LoadSource(Compilation& compilation, const ProgramFiles& files) {
    Diagnostics& diagnostics = compilation.diagnostics;
    diagnostics.StartCompileStage(MessageCode::LoadStarts);
    const bool loaded = LoadSourceFiles(compilation, files);
    CheckOpenAtEndOfFile(compilation);
    diagnostics.PostInfo(MessageCode::SourceLineCount,
                         static_cast<std::int64_t>(compilation.sourceLines.size()));
    diagnostics.EndCompileStage(MessageCode::LoadEnds);
    if (loaded && !HasErrors(diagnostics)) return true;
    diagnostics.PostInfo(MessageCode::StageFailed);
    return false;
}

bool ParseSource(Compilation& compilation) {
    Diagnostics& diagnostics = compilation.diagnostics;
    diagnostics.StartCompileStage(MessageCode::ParseStarts);
    compilation.states.Clear();
    constexpr std::size_t kAmpleElements = 4;
    compilation.elements.reserve(compilation.elements.size() +
                                 kAmpleElements * compilation.sourceLines.size());
    for (SourceLine& line : compilation.sourceLines) {
        ParseSourceLine(compilation, line);
        compilation.environment.progress.LetEventsRun();
    }
    PostOpenBlock(compilation);
    if (!compilation.mainBlockSeen) diagnostics.PostError(MessageCode::NoProgram, nullptr);
    if (compilation.wantsAdvice && !HasErrors(diagnostics)) GiveAdvice(compilation);
    if (HasErrors(diagnostics)) diagnostics.PostInfo(MessageCode::StageFailed);
    diagnostics.EndCompileStage(MessageCode::ParseEnds);
    return !HasErrors(diagnostics);
}

/// Of the object code.
std::int64_t LineCountOf(const Compilation& compilation) {
    std::size_t count = 0;
    for (const ObjectLine& line : compilation.objectLines)
        count += line.LineCount();
    return static_cast<std::int64_t>(count);
}

void GenerateCode(Compilation& compilation) {
    Diagnostics& diagnostics = compilation.diagnostics;
    diagnostics.StartCompileStage(MessageCode::GenerateStarts);
    const std::size_t lines = compilation.sourceLines.size();
    // Room that is not used costs nothing, but moving all lines into a larger room does.
    constexpr std::size_t kAmpleObjectLines = 4;
    compilation.objectLines.reserve(lines * kAmpleObjectLines);
    for (SourceLine& line : compilation.sourceLines) {
        const bool isFirst = compilation.objectLines.empty() && line.GeneratesCode();
        if (isFirst && line.token != Token::BeginProgram) GenerateJumpToProgram(compilation, line);
        GenerateObjectLines(compilation, line);
        compilation.environment.progress.LetEventsRun();
    }
    MakeDataArea(compilation);
    diagnostics.PostInfo(MessageCode::ObjectLineCount, LineCountOf(compilation));
    diagnostics.EndCompileStage(MessageCode::GenerateEnds);
}

void AssignAddresses(Compilation& compilation) {
    Diagnostics& diagnostics = compilation.diagnostics;
    diagnostics.StartCompileStage(MessageCode::AddressStarts);
    constexpr std::int64_t kLargestNumber = std::numeric_limits<std::int32_t>::max();
    std::int64_t address = 0;
    for (ObjectLine& line : compilation.objectLines) {
        line.address = static_cast<std::int32_t>(std::min(address, kLargestNumber));
        address += static_cast<std::int64_t>(line.Size());
    }
    ResolveLabels(compilation);
    if (address > kMemorySize) {
        diagnostics.PostError(MessageCode::ProgramTooLarge, nullptr,
                              std::to_string(address) + " bytes");
    }
    diagnostics.PostInfo(MessageCode::ProgramSize, address);
    diagnostics.EndCompileStage(MessageCode::AddressEnds);
}

bool WriteObjectCode(Compilation& compilation, const ProgramFiles& files, FileWriter& writer,
                     ListingSink* listing) {
    Diagnostics& diagnostics = compilation.diagnostics;
    diagnostics.StartCompileStage(MessageCode::WriteStarts);
    if (listing != nullptr) WriteListing(compilation, *listing);
    const std::string path = PathOf(files.objectDirectory, files.objectFileName);
    const bool written = writer.Write(path, ObjectFileText(compilation)).empty();
    if (!written) {
        diagnostics.PostError(MessageCode::OutsideFailure, nullptr);
        return false;
    }
    diagnostics.EndCompileStage(MessageCode::WriteEnds);
    return true;
}

void WarnOfLargeProgram(Compilation& compilation) {
    // There is a last line: the compiler's own variables are in every program.
    const ObjectLine& last = compilation.objectLines.back();
    const std::int64_t lastByte = last.IsTable() ? static_cast<std::int64_t>(last.Size()) - 1 : 0;
    if (last.address + lastByte <= kLargeProgram) return;
    compilation.environment.prompts.ShowMessage(
        "Caution. Program is larger than 20k. Be careful with stack and local variable use");
}

bool RunStages(Compilation& compilation, const ProgramFiles& files, FileWriter& writer,
               ListingSink* listing) {
    if (!LoadSource(compilation, files) || !ParseSource(compilation)) return false;
    GenerateCode(compilation);
    AssignAddresses(compilation);
    if (!WriteObjectCode(compilation, files, writer, listing)) return false;
    WarnOfLargeProgram(compilation);
    return true;
}

}  // namespace

bool CompileSource(Compilation& compilation, const ProgramFiles& files, FileWriter& writer,
                   ListingSink* listing) {
    LineHints hints(compilation);
    compilation.diagnostics.SetHints(&hints);
    compilation.diagnostics.StartCompile(files.sourceFileName);
    const bool succeeded = RunStages(compilation, files, writer, listing);
    compilation.diagnostics.SetHints(nullptr);
    compilation.diagnostics.EndCompile(MessageCode::RunEnds);
    return succeeded;
}

bool SyntaxCheck(Compilation& compilation, const ProgramFiles& files) {
    LineHints hints(compilation);
    compilation.diagnostics.SetHints(&hints);
    compilation.diagnostics.StartCompile(files.sourceFileName);
    const bool succeeded = LoadSource(compilation, files) && ParseSource(compilation);
    compilation.diagnostics.SetHints(nullptr);
    compilation.diagnostics.EndCompile(MessageCode::RunEnds);
    return succeeded;
}

}  // namespace zentro
