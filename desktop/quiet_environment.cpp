#include "desktop/quiet_environment.h"

namespace zentro {

std::map<QString, Revision> OpenTexts(const Programs& programs) {
    std::map<QString, Revision> texts;
    for (const OpenFile& open : programs.Files())
        texts[open.key] = open.revision;
    return texts;
}

}  // namespace zentro
