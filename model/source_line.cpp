#include "model/source_line.h"

#include "config/text.h"

namespace zentro {

std::size_t FindComment(std::string_view line) {
    bool inQuotes = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == ';' && !inQuotes) return i;
        if (line[i] == '"') inQuotes = !inQuotes;
    }
    return line.size();
}

std::string_view SourceLine::Comment() const {
    return TrimBlanks(text.substr(FindComment(text)));
}

bool SourceLine::GeneratesCode() const {
    switch (purpose) {
        case Purpose::Statement:
        case Purpose::BlockStart:
        case Purpose::Assignment:
        case Purpose::BlockMiddle:
        case Purpose::FunctionAssignment:
        case Purpose::RoutineHeader:
        case Purpose::EventHeader: return true;
        case Purpose::BlockEnd: return token != Token::EndTable;
        case Purpose::Unclassified:
        case Purpose::Blank:
        case Purpose::ByteDeclaration:
        case Purpose::WordDeclaration:
        case Purpose::FlagDeclaration:
        case Purpose::ConstantDeclaration:
        case Purpose::DataTableHeader:
        case Purpose::PointerDeclaration: return false;
    }
    return false;
}

bool SourceLine::IsSystemFunctionCall() const {
    return FamilyOf(token) == TokenFamily::Function && token != Token::RoutineCall;
}

}  // namespace zentro
