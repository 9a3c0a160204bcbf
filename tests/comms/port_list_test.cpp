// Which port is meant, and what a user is told about one that does not open.
#include "comms/port_list.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <grp.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "comms/port_advice.h"
#include "tests/comms/board_fixture.h"

namespace zentro {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const PortDescription kBuiltIn0{"/dev/ttyS0", "", {}};
const PortDescription kBuiltIn4{"/dev/ttyS4", "", {}};
const PortDescription kPlain0{"/dev/ttyUSB0", "Cable", UsbIdentity{0x1A86, 0x7523, ""}};
const PortDescription kPlain1{"/dev/ttyUSB1", "Cable", UsbIdentity{0x1A86, 0x7523, ""}};
const PortDescription kNumbered0{"/dev/ttyUSB0", "Adapter", UsbIdentity{0x0403, 0x6001, "A1"}};
const PortDescription kNumbered1{"/dev/ttyUSB1", "Adapter", UsbIdentity{0x0403, 0x6001, "A1"}};
const PortDescription kNumbered2{"/dev/ttyUSB2", "Adapter", UsbIdentity{0x0403, 0x6001, "A1"}};
const PortDescription kOther0{"/dev/ttyUSB0", "Adapter", UsbIdentity{0x0403, 0x6001, "B2"}};

#ifndef Q_OS_WIN
TEST(DevicePathTest, ComNamesStandForBuiltInPorts) {
    const std::vector<PortDescription> present{kPlain0, kBuiltIn0, kBuiltIn4};
    const std::vector<std::array<const char*, 2>> cases{
        {"COM1", "/dev/ttyS0"},       {"com2", "/dev/ttyS4"}, {"COM3", "COM3"}, {"COM5", "COM5"},
        {"COM11", "COM11"},           {"COM0", "COM0"},       {"LPT1", "LPT1"}, {"", ""},
        {"/dev/ttyS0", "/dev/ttyS0"}, {"ttyUSB0", "ttyUSB0"},
    };
    for (const auto& [name, device] : cases) {
        EXPECT_EQ(DevicePath(name, present), device) << name;
    }
}
#endif

TEST(FindPortTest, FindsThatVeryPortOrNone) {
    struct Case {
        const char* name;
        PortDescription was;
        std::vector<PortDescription> present;
        std::optional<std::string> found;
    };
    const std::vector<Case> cases{
        {"the same", kNumbered0, {kBuiltIn0, kNumbered0}, "/dev/ttyUSB0"},
        {"gone", kNumbered0, {kBuiltIn0}, std::nullopt},
        {"under another name", kNumbered0, {kBuiltIn0, kNumbered1}, "/dev/ttyUSB1"},
        {"another adapter at its place", kNumbered0, {kOther0}, std::nullopt},
        {"another at its place, it elsewhere", kNumbered0, {kOther0, kNumbered1}, "/dev/ttyUSB1"},
        {"two with its number, one at its place",
         kNumbered0,
         {kNumbered1, kNumbered0},
         "/dev/ttyUSB0"},
        {"two with its number elsewhere", kNumbered0, {kNumbered1, kNumbered2}, std::nullopt},
        {"without a number", kPlain0, {kPlain0, kPlain1}, "/dev/ttyUSB0"},
        {"without a number, under another name", kPlain0, {kPlain1}, std::nullopt},
        {"an adapter where a built-in port was", {"/dev/ttyUSB0", "", {}}, {kPlain0}, std::nullopt},
        {"built in", kBuiltIn0, {kBuiltIn0, kBuiltIn4}, "/dev/ttyS0"},
    };
    for (const Case& row : cases) {
        const PortIdentity identity = IdentityOf(row.was.name, {row.was});
        EXPECT_EQ(FindPort(identity, row.present), row.found) << row.name;
    }
}

TEST(IdentityOfTest, FollowsALinkToTheDevice) {
    const std::string link = ::testing::TempDir() + "zentro-port-link-" + std::to_string(getpid());
    std::filesystem::create_symlink("/dev/null", link);
    const PortDescription adapter{"/dev/null", "", UsbIdentity{1, 2, "A1"}};
    const PortIdentity identity = IdentityOf(link, {kBuiltIn0, adapter});
    std::filesystem::remove(link);
    EXPECT_EQ(identity.device, "/dev/null");
    EXPECT_EQ(identity.usb, adapter.usb);
    EXPECT_EQ(IdentityOf("/dev/ttyX", {adapter}).usb, std::nullopt);
}

/// The advice that a user without special rights gets.
std::string AdviceForOrdinaryUser(const std::string& device,
                                  std::optional<gid_t> sessionGroup = {}) {
    if (getuid() != 0) return AdviceForPort(device);
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        // What the test has open is not the user's.
        close_range(3, static_cast<unsigned>(ends[0]), 0);
        const passwd* const nobody = getpwnam("nobody");
        const bool dropped = nobody != nullptr && setgroups(0, nullptr) == 0 &&
                             setgid(sessionGroup.value_or(nobody->pw_gid)) == 0 &&
                             setuid(nobody->pw_uid) == 0;
        const std::string advice = dropped ? AdviceForPort(device) : "rights not dropped";
        const bool written =
            write(ends[1], advice.data(), advice.size()) == static_cast<ssize_t>(advice.size());
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    std::array<char, 4096> text{};
    const ssize_t count = read(ends[0], text.data(), text.size());
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return {text.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

TEST(PortAdviceTest, TellsWhichGroupToJoin) {
    // Any group but the first serves: the advice has to name the one that the device has.
    const group* const owner = getgrnam("tape");
    if (getuid() != 0 || owner == nullptr) GTEST_SKIP() << "needs the administrator";
    ScriptedBoard board;
    const std::string& device = board.PortName();
    ASSERT_EQ(chown(device.c_str(), 0, owner->gr_gid), 0);
    ASSERT_EQ(chmod(device.c_str(), 0660), 0);
    const std::string advice = AdviceForOrdinaryUser(device);
    EXPECT_THAT(advice, StartsWith("Only members of the group tape may open " + device));
    EXPECT_THAT(advice, HasSubstr("sudo usermod -aG tape nobody\n"));
    EXPECT_THAT(advice, HasSubstr("log in again"));

    ASSERT_EQ(chmod(device.c_str(), 0600), 0);
    EXPECT_THAT(AdviceForOrdinaryUser(device), HasSubstr("sudo chmod a+rw " + device));

    // The user's own group, which a session that began before does not have.
    const passwd* const nobody = getpwnam("nobody");
    ASSERT_EQ(chown(device.c_str(), 0, nobody->pw_gid), 0);
    ASSERT_EQ(chmod(device.c_str(), 0060), 0);
    EXPECT_THAT(AdviceForOrdinaryUser(device, owner->gr_gid),
                AllOf(StartsWith("nobody is in the group "), HasSubstr("Log out and log in")));
}

TEST(PortAdviceTest, TellsWhatIsWrongWithTheDevice) {
    EXPECT_THAT(AdviceForPort("/dev/no-such-port"),
                StartsWith("There is no /dev/no-such-port at present. "));
    EXPECT_THAT(AdviceForPort("/dev/null"), StartsWith("/dev/null is no serial port. "));
    EXPECT_THAT(AdviceForPort("/tmp"), StartsWith("/tmp is no serial port. "));
    EXPECT_THAT(AdviceForPort("/dev/null/port"), StartsWith("There is no /dev/null/port at "));
    const std::string odd = ::testing::TempDir() + "zentro-odd-port-" + std::to_string(getpid());
    ASSERT_EQ(mknod(odd.c_str(), S_IFSOCK | 0600, 0), 0);
    EXPECT_THAT(AdviceForPort(odd), StartsWith("There is nothing behind " + odd));
    std::filesystem::remove(odd);
    std::filesystem::create_symlink(odd, odd);
    EXPECT_EQ(AdviceForPort(odd), odd + ": Too many levels of symbolic links.");
    std::filesystem::remove(odd);
}

TEST(PortAdviceTest, TellsWhoHasThePortOpen) {
    ScriptedBoard board;
    EXPECT_EQ(AdviceForPort(board.PortName()), "");
    const int held = open(board.PortName().c_str(), O_RDWR | O_NOCTTY);
    EXPECT_EQ(AdviceForPort(board.PortName()),
              board.PortName() + " is present, but in use by comms_tests (process " +
                  std::to_string(getpid()) + "). Close the connection there first.");
    const pid_t second = fork();
    if (second == 0) {
        pause();
        _exit(0);
    }
    EXPECT_THAT(AdviceForPort(board.PortName()),
                AllOf(HasSubstr("(process " + std::to_string(getpid()) + ")"), HasSubstr(", "),
                      HasSubstr("(process " + std::to_string(second) + ")")));
    // Once it is locked, the one that has locked it is in the way and no other.
    ASSERT_EQ(flock(held, LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(AdviceForPort(board.PortName()),
              board.PortName() + " is present, but in use by comms_tests (process " +
                  std::to_string(getpid()) + "). Close the connection there first.");
    flock(held, LOCK_UN);
    kill(second, SIGKILL);
    waitpid(second, nullptr, 0);

    if (getuid() == 0) {  // whose programs others may not look into
        ASSERT_EQ(chmod(board.PortName().c_str(), 0666), 0);
        ASSERT_EQ(ioctl(held, TIOCEXCL), 0);
        EXPECT_EQ(AdviceForOrdinaryUser(board.PortName()),
                  board.PortName() + " is present, but in use by another user's program.");
    }
    close(held);
}

}  // namespace
}  // namespace zentro
