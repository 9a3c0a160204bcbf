#include "apps/zentroc/console.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <unistd.h>

namespace zentro {

void TellFailure(std::string_view text) {
    static_cast<void>(
        std::fprintf(stderr, "zentroc: %.*s\n", static_cast<int>(text.size()), text.data()));
}

void StandardOutput::Write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() && error_ == 0)
        error_ = errno;
}

std::string StandardOutput::Finish() {
    if (std::fflush(stdout) != 0 && error_ == 0) error_ = errno;
    return error_ == 0 ? std::string() : std::generic_category().message(error_);
}

bool StandardOutput::IsTerminal() const {
    return isatty(STDOUT_FILENO) != 0;
}

void ConsolePrompts::ShowMessage(std::string_view text) {
    TellFailure(text);
}

std::optional<std::string> ConsolePrompts::FindMissingFile(std::string_view, std::string_view,
                                                           std::string_view) {
    return std::nullopt;
}

FileContent DiskReader::Read(const std::string& path) {
    FileContent content = ReadWholeFile(path);
    inputs_.Add(path, content);
    if (content.status != FileContent::Status::Read) {
        TellFailure("cannot read '" + path + "': " + content.problem);
        if (isFirst_) mainFileFailed_ = true;
    }
    isFirst_ = false;
    return content;
}

std::string DiskWriter::Write(const std::string& path, std::string_view bytes) {
    std::string problem = RefusalOf(outputs_, inputs_);
    if (!problem.empty()) {
        TellFailure(problem);
        failed_ = true;
        return problem;
    }
    problem = WriteWholeFile(path, bytes);
    if (!problem.empty()) {
        TellFailure("cannot write '" + path + "': " + problem);
        failed_ = true;
    }
    return problem;
}

}  // namespace zentro
