#include "desktop/program_files.h"

#include <filesystem>
#include <system_error>

#include "compiler/paths.h"
#include "config/file.h"

namespace zentro {

ProgramFiles ProgramFilesOf(const OpenFile& file, const SettingsStore& settings) {
    const std::string folder = file.folder.toStdString();
    const std::string fileName = file.name.toStdString();
    const auto folderOf = [&](SettingNumber number) {
        const std::string chosen = AsText(settings.GetSetting(number));
        return chosen.empty() ? folder : chosen;
    };
    ProgramFiles files;
    files.sourceDirectory = folder;
    files.sourceFileName = fileName;
    files.includeDirectory = folderOf(SettingNumber::SourceFolder);
    files.objectDirectory = folderOf(SettingNumber::ObjectFolder);
    files.objectFileName = ChangeExtension(fileName, "obj");
    return files;
}

FileContent PatientReader::Read(const std::string& path) {
    auto content =
        disk_.Ask(QString::fromStdString(path), patience_, [path] { return ReadWholeFile(path); });
    gotNoAnswer_ = !content;
    if (content) return std::move(*content);
    patience_ = Patience::Short;
    return {FileContent::Status::Failed, {}, kNoAnswer, {}};
}

FileContent OpenTextReader::Read(const std::string& path) {
    if (const auto text = programs_.OpenText(QString::fromStdString(path)))
        return {FileContent::Status::Read, text->toStdString(), {}};
    return reader_.Read(path);
}

bool WouldOverwriteSource(const ProgramFiles& files) {
    std::error_code failed;
    const bool same =
        std::filesystem::equivalent(PathOf(files.sourceDirectory, files.sourceFileName),
                                    PathOf(files.objectDirectory, files.objectFileName), failed);
    return same && !failed;
}

}  // namespace zentro
