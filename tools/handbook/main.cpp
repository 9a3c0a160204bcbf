// zentro-handbook CONFIGURATION FOLDER PAGE: makes the handbook from the language's configuration
// and the manuscript in a folder.

#include <iostream>
#include <string>

#include "config/configuration.h"
#include "config/file.h"
#include "tools/handbook/handbook.h"

namespace {

using namespace zentro;

int Fail(const std::string& problem) {
    std::cerr << "zentro-handbook: " << problem << "\n";
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return Fail("needs the configuration, the manuscript's folder and the page");
    InstructionConfiguration language;
    if (const std::string problem = LoadInstructionConfig(argv[1], language); !problem.empty())
        return Fail(problem);
    const Handbook handbook = MakeHandbook(language, ReadManuscriptFolder(argv[2]));
    for (const std::string& problem : handbook.problems)
        Fail(problem);
    if (!handbook.problems.empty()) return 1;
    const std::string problem = WriteWholeFile(argv[3], handbook.html);
    return problem.empty() ? 0 : Fail(std::string(argv[3]) + ": " + problem);
}
