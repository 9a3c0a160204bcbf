#include "compiler/paths.h"

namespace zentro {

namespace {

#ifdef _WIN32
constexpr char kFolderEnd = '\\';
#else
constexpr char kFolderEnd = '/';
#endif

}  // namespace

bool IsAbsoluteName(std::string_view fileName) {
#ifdef _WIN32
    return fileName.find(':') != std::string_view::npos;
#else
    return fileName.starts_with('/');
#endif
}

std::string PathOf(std::string_view directory, std::string_view fileName) {
    if (directory.empty() || IsAbsoluteName(fileName)) return std::string(fileName);
    std::string path(directory);
    if (path.back() != kFolderEnd) path += kFolderEnd;
    path += fileName;
    return path;
}

std::string ChangeExtension(std::string_view fileName, std::string_view extension) {
    std::string changed(fileName.substr(0, fileName.find('.')));
    changed += '.';
    changed += extension;
    return changed;
}

}  // namespace zentro
