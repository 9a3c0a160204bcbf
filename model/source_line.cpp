#include "model/source_line.h"

#include <algorithm>

namespace zentro {

void SourceLine::AddElement(const LineElement& element) {
    constexpr std::size_t kUsual = 3;  // a target and two operands
    if (elements.capacity() == 0) elements.reserve(kUsual);
    elements.push_back(element);
}

const LineElement* SourceLine::GetElement(ElementUse use, std::size_t index) const {
    for (const LineElement& element : elements) {
        if (element.use == use && index-- == 0) return &element;
    }
    return nullptr;
}

const LineElement* SourceLine::GetElement(ElementClass elementClass) const {
    const auto found = std::find_if(elements.begin(), elements.end(), [&](const LineElement& e) {
        return e.elementClass == elementClass;
    });
    return found == elements.end() ? nullptr : &*found;
}

std::size_t SourceLine::CountElements(ElementUse use) const {
    return static_cast<std::size_t>(std::count_if(
        elements.begin(), elements.end(), [&](const LineElement& e) { return e.use == use; }));
}

bool SourceLine::GeneratesCode() const {
    switch (purpose) {
        case Purpose::Statement:
        case Purpose::BlockStart:
        case Purpose::Assignment:
        case Purpose::BlockMiddle:
        case Purpose::FunctionAssignment:
        case Purpose::RoutineHeader:
        case Purpose::EventHeader:
            return true;
        case Purpose::BlockEnd:
            return token != Token::EndTable;
        case Purpose::Unclassified:
        case Purpose::Blank:
        case Purpose::ByteDeclaration:
        case Purpose::WordDeclaration:
        case Purpose::FlagDeclaration:
        case Purpose::ConstantDeclaration:
        case Purpose::DataTableHeader:
        case Purpose::PointerDeclaration:
            return false;
    }
    return false;
}

bool SourceLine::IsSystemFunctionCall() const {
    return FamilyOf(token) == TokenFamily::Function && token != Token::RoutineCall;
}

}  // namespace zentro
