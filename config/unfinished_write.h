#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace zentro {

/// What a write keeps beside its file until it is done. The names are short whatever the file's is,
/// and like no name that a user gives a file.
///
///     .zentro-PROCESS-NUMBER.new   the new content, until it takes the file's place
///     .zentro-PROCESS-INODE.old    the old content of the file with that number, which is being
///                                  overwritten where it is; whole from when it has this name
std::string NameOfNewContent(pid_t process, unsigned number);
std::string NameOfOldContent(pid_t process, ino_t file);

/// The path of a file beside another one.
std::string Beside(const std::string& path, const std::string& name);

}  // namespace zentro
