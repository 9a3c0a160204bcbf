#include "comms/port_advice.h"

#include <QtGlobal>

#include "comms/port_list.h"

#ifdef Q_OS_LINUX
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>
#include <vector>
#endif

namespace zentro {

namespace {

std::string PresentPorts() {
    std::string list;
    for (const PortDescription& port : ListPorts()) {
        list += "\n    " + port.name;
        if (!port.description.empty()) list += " (" + port.description + ")";
    }
    if (list.empty()) {
        return "This computer has no serial port at present. Is the board's cable plugged in?";
    }
    return "These ports are present:" + list;
}

#ifdef Q_OS_LINUX

namespace fs = std::filesystem;

/// The system's error number when a program opens the device; 0: none.
int ProblemOf(const std::string& device) {
    const int descriptor = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return errno;
    const bool isPort = isatty(descriptor) == 1;
    close(descriptor);
    return isPort ? 0 : ENOTTY;
}

/// A bare name stands for a device of the system, never for a file of the current folder.
bool IsPortInFolder(const std::string& name) {
    return !name.empty() && name.find('/') == std::string::npos && ProblemOf("./" + name) == 0;
}

std::string UserName() {
    const passwd* const user = getpwuid(geteuid());
    return user != nullptr ? user->pw_name : "$USER";
}

/// Whether the user has been entered in the group, in this session or since.
bool IsEntered(const std::string& userName, gid_t group) {
    const passwd* const user = getpwnam(userName.c_str());
    if (user == nullptr) return false;
    int count = 0;
    getgrouplist(user->pw_name, user->pw_gid, nullptr, &count);
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    getgrouplist(user->pw_name, user->pw_gid, groups.data(), &count);
    return std::ranges::find(groups, group) != groups.end();
}

std::string PermissionAdvice(const std::string& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0) return "You have no permission to open " + device + ".";
    constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
    const group* const owner = getgrgid(status.st_gid);
    if ((status.st_mode & kGroupMayUse) != kGroupMayUse || owner == nullptr) {
        return "You have no permission to open " + device +
               ", and no group has. To allow it until the device is plugged in again, type in a "
               "terminal:\n    sudo chmod a+rw " +
               device;
    }
    const std::string groupName = owner->gr_name;
    const std::string user = UserName();
    if (IsEntered(user, status.st_gid)) {
        return user + " is in the group " + groupName + ", which may open " + device +
               ", but has been only since this session began. Log out and log in again.";
    }
    return "Only members of the group " + groupName + " may open " + device +
           ". To join it, type in a terminal:\n    sudo usermod -aG " + groupName + " " + user +
           "\nThen log out and log in again.";
}

bool Holds(const fs::path& process, const fs::path& device) {
    std::error_code failed;
    for (fs::directory_iterator entry(process / "fd", failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::error_code gone;
        if (fs::read_symlink(entry->path(), gone) == device) return true;
    }
    return false;
}

std::string ProgramName(const fs::path& process) {
    std::string name;
    std::ifstream file(process / "comm");
    std::getline(file, name);
    return name;
}

/// "minicom (process 4711)"; empty when there is no such process.
std::string Described(const std::string& process) {
    const std::string name = ProgramName(fs::path("/proc") / process);
    return name.empty() ? name : name + " (process " + process + ")";
}

/// The process that has locked the file, by the system's list of locks; empty: nobody.
std::string LockingProcess(const std::string& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0) return {};
    std::array<char, 64> place{};
    std::snprintf(place.data(), place.size(), "%02x:%02x:%llu", major(status.st_dev),
                  minor(status.st_dev), static_cast<unsigned long long>(status.st_ino));
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        std::string number, kind, manner, access, process, where;
        words >> number >> kind >> manner >> access >> process >> where;
        if (kind == "FLOCK" && where == place.data()) return process;
    }
    return {};
}

/// The process in the lock file that other programs write, "LCK..ttyS0" in a folder for such files.
std::string ProcessInLockFile(const std::string& device) {
    std::string name = device.substr(device.starts_with("/dev/") ? 5 : 0);
    std::ranges::replace(name, '/', '_');
    for (const char* const folder : {"/var/lock/LCK..", "/run/lock/LCK.."}) {
        std::ifstream file(folder + name);
        std::string process;
        if (file >> process) return process;
    }
    return {};
}

/// All programs that have the device open and that this user may look into, with commas between.
std::string Openers(const std::string& device) {
    std::error_code failed;
    std::string openers;
    for (fs::directory_iterator entry("/proc", failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string id = entry->path().filename().string();
        if (id.find_first_not_of("0123456789") != std::string::npos) continue;
        if (!Holds(entry->path(), device)) continue;
        if (!openers.empty()) openers += ", ";
        openers += Described(id);
    }
    return openers;
}

/// Who keeps others off the device: the one that has locked it. Others may have it open beside
/// that. Without a lock any of those that have it open may be in the way.
std::string Holders(const std::string& device) {
    std::error_code failed;
    const std::string target = fs::canonical(device, failed).string();
    if (failed) return {};
    for (const std::string& process : {LockingProcess(target), ProcessInLockFile(target)}) {
        std::string holder = process.empty() ? process : Described(process);
        if (!holder.empty()) return holder;
    }
    return Openers(target);
}

std::string UseAdvice(const std::string& device, int problem) {
    const std::string holders = Holders(device);
    if (!holders.empty()) {
        return device + " is present, but in use by " + holders +
               ". Close the connection there first.";
    }
    if (problem == EBUSY) return device + " is present, but in use by another user's program.";
    if (problem == 0) return {};
    return device + ": " + std::generic_category().message(problem) + ".";
}

#endif

}  // namespace

#ifdef Q_OS_LINUX

std::string AdviceForPort(const std::string& device, const std::string& asked) {
    const int problem = ProblemOf(device);
    switch (problem) {
        case ENOENT:
        case ENOTDIR:
            if (IsPortInFolder(asked))
                return "There is no " + device + ", but there is ./" + asked +
                       ". To use that, name it ./" + asked + ".";
            return "There is no " + device + " at present. " + PresentPorts();
        case EACCES:
        case EPERM: return PermissionAdvice(device);
        case ENOTTY:
        case EISDIR: return device + " is no serial port. " + PresentPorts();
        case ENXIO:
        case ENODEV:
        case EIO: return "There is nothing behind " + device + " at present. " + PresentPorts();
        default: return UseAdvice(device, problem);
    }
}

#else

std::string AdviceForPort(const std::string&, const std::string&) {
    return "It may be in use by another program. " + PresentPorts();
}

#endif

}  // namespace zentro
