#include "apps/zentro-board/files.h"

#include <iostream>
#include <system_error>

#include "config/file.h"

namespace zentro {

bool Complain(const std::string& what, const std::string& wrong) {
    std::cerr << "zentro-board: " << what << ": " << wrong << '\n';
    return false;
}

bool UseFile(const std::string& path, const std::function<std::string(const std::string&)>& use) {
    if (path.empty()) return true;
    const FileContent file = ReadWholeFile(path);
    if (file.status != FileContent::Status::Read)
        return Complain(path, "cannot be read: " + file.problem);
    const std::string wrong = use(file.bytes);
    return wrong.empty() || Complain(path, wrong);
}

bool MakeFile(const std::string& path, const std::string& content) {
    if (path.empty()) return true;
    const std::string problem = WriteWholeFile(path, content);
    return problem.empty() || Complain(path, "cannot be written: " + problem);
}

std::filesystem::path ShippedFolder(const std::string& name) {
    namespace fs = std::filesystem;
    std::error_code failed;
    const fs::path folder = fs::read_symlink("/proc/self/exe", failed).parent_path();
    fs::path beside = folder / name;
    if (fs::exists(beside, failed)) return beside;
    return folder.parent_path() / "share" / "zentrocompiler" / name;
}

}  // namespace zentro
