#include "tests/servers/MountedProgram.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/mount.h>

namespace morvex {

namespace {

constexpr const char* programs = "/usr/bin";

}

std::expected<std::unique_ptr<MountedProgram>, std::string>
MountedProgram::create(const std::string& name, const std::string& script) {
    std::unique_ptr<MountedProgram> made(new MountedProgram);
    if (!made->mountOwnFolder()) return std::unexpected(std::string("own folder: ") + std::strerror(errno));
    for (const char* part : {"upper", "work"}) std::filesystem::create_directory(made->folder_.path() / part);
    const auto program = made->folder_.path() / "upper" / name;
    std::ofstream(program) << script;
    std::filesystem::permissions(program, std::filesystem::perms(0755));
    std::filesystem::permissions(made->folder_.path() / "upper", std::filesystem::perms(0755));
    if (!made->mountOver()) return std::unexpected(std::string("own programs: ") + std::strerror(errno));
    made->isMounted_ = true;
    return made;
}

MountedProgram::~MountedProgram() {
    if (isMounted_) ::umount2(programs, MNT_DETACH);
    ::umount2(folder_.path().c_str(), MNT_DETACH);
}

/// The temporary folder may itself lie on layers, over which no further ones are allowed.
bool MountedProgram::mountOwnFolder() const {
    return ::mount("tmpfs", folder_.path().c_str(), "tmpfs", 0, nullptr) == 0;
}

bool MountedProgram::mountOver() const {
    const auto folder = folder_.path().string();
    const auto layers =
        "lowerdir=" + std::string(programs) + ",upperdir=" + folder + "/upper,workdir=" + folder + "/work";
    return ::mount("overlay", programs, "overlay", 0, layers.c_str()) == 0;
}

} // namespace morvex
