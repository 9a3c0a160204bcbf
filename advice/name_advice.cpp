#include <algorithm>
#include <unordered_set>

#include "advice/advice_finders.h"

namespace zentro {

void NameAdvice::Look(const SourceLine& line) {
    const Compilation& compilation = search_.compilation;
    if (line.token == Token::EndProgram) isInProgram_ = false;
    isWritten_ = isWritten_ || isInProgram_;
    if (line.token == Token::BeginProgram) isInProgram_ = true;
    if (line.token == Token::EnableEvents) eventsAreEnabled_ = true;
    if (line.token == Token::SetEvent) {
        if (firstSetEvent_ == nullptr) firstSetEvent_ = &line;
        for (const LineElement& element : compilation.ElementsOf(line))
            watched_.insert(element.location);
    }
    for (const LineElement& element : compilation.ElementsOf(line)) {
        if (element.elementClass == ElementClass::Call) called_.insert(element.location);
    }
}

/// What a file is for that is included into others cannot be told from one of them.
bool NameAdvice::IsOfMainFile(const Symbol& symbol) const {
    const Compilation& compilation = search_.compilation;
    return symbol.declareLineNo > 0 &&
           compilation.GetSourceLine(symbol.declareLineNo).file == &compilation.files.front();
}

void NameAdvice::Finish() {
    // Before its first statement a program cannot use anything yet.
    if (!isWritten_) return;
    const Compilation& compilation = search_.compilation;
    if (firstSetEvent_ != nullptr && !eventsAreEnabled_)
        search_.Add(*firstSetEvent_, MessageCode::EventsNeverEnabled);
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (!IsOfMainFile(symbol)) continue;
        const SourceLine& line = compilation.GetSourceLine(symbol.declareLineNo);
        if (symbol.symbolClass == SymbolClass::Event && !watched_.contains(&symbol.label))
            search_.Add(line, MessageCode::EventNeverWatched, symbol.name);
        if (symbol.symbolClass == SymbolClass::Routine && !called_.contains(&symbol.label))
            search_.Add(line, MessageCode::RoutineNeverCalled, symbol.name);
    }
    LookAtVariables();
}

/// Parameters are left alone: a routine has to take what its callers give.
void NameAdvice::LookAtVariables() {
    const Compilation& compilation = search_.compilation;
    std::unordered_set<const Label*> unused;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.symbolClass != SymbolClass::Variable || !IsOfMainFile(symbol)) continue;
        const SourceLine& line = compilation.GetSourceLine(symbol.declareLineNo);
        if (line.token == Token::DefineRoutine) continue;
        unused.insert(&symbol.label);
        if (symbol.parent == ParentId::Program) continue;
        const Symbol* other = compilation.symbols.FindOwn(symbol.name, ParentId::Program);
        if (other != nullptr && other->symbolClass == SymbolClass::Variable)
            search_.Add(line, MessageCode::NameHidden, symbol.name);
    }
    for (const LineElement& element : compilation.elements) {
        if (unused.empty()) return;
        if (!element.IsConstant()) unused.erase(element.location);
    }
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (unused.contains(&symbol.label))
            search_.Add(compilation.GetSourceLine(symbol.declareLineNo),
                        MessageCode::VariableNeverUsed, symbol.name);
    }
}

}  // namespace zentro
