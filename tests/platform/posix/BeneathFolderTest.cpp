#include "platform/posix/BeneathFolder.h"

#include "shared/base/SystemError.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <functional>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace morvex {
namespace {

/// From here on this thread has a kernel that does not know openat2.
void forgetOpenat2() {
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat2, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
    ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
    ASSERT_EQ(::syscall(SYS_openat2, AT_FDCWD, "/", nullptr, 0), -1);
    ASSERT_EQ(errno, ENOSYS);
}

template <class T> int code(const Result<T>& result) {
    if (result) return 0;
    const auto* cause = result.error().template as<SystemError>();
    return cause ? cause->code : -1;
}

mode_t modeOf(const std::string& path) {
    struct stat status{};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

/// Every test runs twice: with the kernel's own walk and with the walk a component at a time.
class BeneathFolderTest : public testing::TestWithParam<bool> {
  protected:
    void onKernel(const std::function<void(const BeneathFolder&)>& check) const {
        std::thread([&] {
            if (!GetParam()) forgetOpenat2();
            auto folder = BeneathFolder::open(tree.path("home/Projects"));
            ASSERT_TRUE(folder) << folder.error().popis().czech();
            check(*folder);
        }).join();
    }

    FileTree tree;
};

INSTANTIATE_TEST_SUITE_P(Kernels, BeneathFolderTest, testing::Values(true, false),
                         [](const auto& test) { return test.param ? "WithOpenat2" : "WithoutOpenat2"; });

TEST_P(BeneathFolderTest, OpensRegularFilesAtAnyDepth) {
    tree.file("home/Projects/a", "one");
    tree.file("home/Projects/b/c/d", "two");
    onKernel([](const BeneathFolder& folder) {
        auto one = folder.openFile("a");
        auto two = folder.openFile("b/c/d");
        ASSERT_TRUE(one && two);
        EXPECT_EQ(asText(*readUpTo(one->get(), 100)), "one");
        EXPECT_EQ(asText(*readUpTo(two->get(), 100)), "two");
    });
}

TEST_P(BeneathFolderTest, FollowsNoLinkAnywhere) {
    tree.file("home/Projects/real/file", "");
    tree.file("home/Projects/real/deep/file", "");
    tree.folder("outside/deep");
    tree.link("home/Projects/link", "real/file");
    tree.link("home/Projects/parent", "real");
    tree.link("home/Projects/out", tree.path("outside"));
    onKernel([](const BeneathFolder& folder) {
        EXPECT_FALSE(folder.openFile("link"));
        EXPECT_FALSE(folder.openFile("parent/file"));
        EXPECT_FALSE(folder.openFile("parent/deep/file"));
        EXPECT_FALSE(folder.openFolder("parent"));
        EXPECT_FALSE(folder.openFolder("out/deep"));
        EXPECT_FALSE(folder.openFolder("out"));
        EXPECT_FALSE(folder.writeNew("parent/new", asBytes("x")));
        EXPECT_FALSE(folder.writeNew("out/new", asBytes("x")));
        EXPECT_FALSE(folder.writeNew("out/new/newer", asBytes("x")));
        EXPECT_FALSE(folder.writeNew("out/deep/new", asBytes("x")));
    });
    EXPECT_FALSE(tree.exists("home/Projects/real/new"));
    EXPECT_FALSE(tree.exists("outside/new"));
    EXPECT_FALSE(tree.exists("outside/deep/new"));
}

TEST_P(BeneathFolderTest, NeverGoesUpAndCutsNoNulByte) {
    tree.file("home/Projects/a", "");
    onKernel([](const BeneathFolder& folder) {
        EXPECT_EQ(code(folder.openFile("../Projects/a")), EXDEV);
        EXPECT_EQ(code(folder.openFolder("..")), EXDEV);
        EXPECT_EQ(code(folder.writeNew("b/../../c", asBytes(""))), EXDEV);
        EXPECT_EQ(code(folder.openFile(std::string_view("a\0", 2))), EINVAL);
        EXPECT_EQ(code(folder.writeNew(std::string_view("b\0", 2), asBytes(""))), EINVAL);
    });
    EXPECT_FALSE(tree.exists("home/Projects/b"));
}

TEST_P(BeneathFolderTest, AnAbsolutePathIsTakenFromTheFolder) {
    onKernel([](const BeneathFolder& folder) { EXPECT_EQ(code(folder.openFile("/etc/passwd")), ENOENT); });
}

TEST_P(BeneathFolderTest, OnlyARegularFileIsAFile) {
    tree.folder("home/Projects/folder");
    ASSERT_EQ(::mkfifo(tree.path("home/Projects/pipe").c_str(), 0600), 0);
    sockaddr_un address{AF_UNIX, {}};
    auto path = tree.path("home/Projects/socket");
    ASSERT_LT(path.copy(address.sun_path, sizeof address.sun_path - 1), sizeof address.sun_path - 1);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    onKernel([](const BeneathFolder& folder) {
        EXPECT_EQ(code(folder.openFile("folder")), EISDIR);
        EXPECT_EQ(code(folder.openFile("")), EISDIR);
        EXPECT_EQ(code(folder.openFile("pipe")), EINVAL);
        EXPECT_EQ(code(folder.openFile("socket")), EINVAL);
        EXPECT_EQ(code(folder.openFile("none")), ENOENT);
        EXPECT_EQ(code(folder.openFile("pipe/none")), ENOTDIR);
    });
}

TEST_P(BeneathFolderTest, ADeviceIsNotAFile) {
    std::thread([] {
        if (!GetParam()) forgetOpenat2();
        auto devices = BeneathFolder::open("/dev");
        ASSERT_TRUE(devices);
        EXPECT_EQ(code(devices->openFile("zero")), EINVAL);
        EXPECT_EQ(code(devices->openFile("tty")), EINVAL);
    }).join();
}

TEST_P(BeneathFolderTest, ExistsSeesLinksThatLeadNowhere) {
    tree.file("home/Projects/a", "");
    tree.link("home/Projects/dangling", "none");
    onKernel([](const BeneathFolder& folder) {
        EXPECT_TRUE(folder.exists("a").value());
        EXPECT_TRUE(folder.exists("").value());
        EXPECT_TRUE(folder.exists("dangling").value());
        EXPECT_FALSE(folder.exists("none").value());
        EXPECT_FALSE(folder.exists("none/none").value());
        EXPECT_FALSE(folder.exists("a/none").value());
        EXPECT_EQ(code(folder.exists(std::string(300, 'x'))), ENAMETOOLONG);
    });
}

TEST_P(BeneathFolderTest, WritesExactBytesAndMakesTheFoldersAbove) {
    auto before = ::umask(022);
    onKernel([](const BeneathFolder& folder) {
        EXPECT_TRUE(folder.writeNew("a/b/c", asBytes(std::string_view("x\0\xff\n", 4))));
        EXPECT_TRUE(folder.writeNew("a/b/d", asBytes("")));
    });
    ::umask(before);
    EXPECT_EQ(tree.content("home/Projects/a/b/c"), std::string("x\0\xff\n", 4));
    EXPECT_TRUE(tree.exists("home/Projects/a/b/d"));
    EXPECT_EQ(modeOf(tree.path("home/Projects/a/b/c")), 0644U);
    EXPECT_EQ(modeOf(tree.path("home/Projects/a")), 0755U);
}

TEST_P(BeneathFolderTest, TheUmaskTakesRightsAway) {
    auto before = ::umask(077);
    onKernel([](const BeneathFolder& folder) { EXPECT_TRUE(folder.writeNew("a/b", asBytes("x"))); });
    ::umask(before);
    EXPECT_EQ(modeOf(tree.path("home/Projects/a/b")), 0600U);
    EXPECT_EQ(modeOf(tree.path("home/Projects/a")), 0700U);
}

TEST_P(BeneathFolderTest, ReplacesNothing) {
    tree.file("home/Projects/a", "old");
    tree.link("home/Projects/dangling", tree.path("outside/new"));
    onKernel([](const BeneathFolder& folder) {
        EXPECT_EQ(code(folder.writeNew("a", asBytes("new"))), EEXIST);
        EXPECT_EQ(code(folder.writeNew("dangling", asBytes("new"))), EEXIST);
        EXPECT_EQ(code(folder.writeNew("", asBytes("new"))), EEXIST);
        EXPECT_EQ(code(folder.writeNew("a/b", asBytes("new"))), ENOTDIR);
    });
    EXPECT_EQ(tree.content("home/Projects/a"), "old");
    EXPECT_FALSE(tree.exists("outside/new"));
}

TEST_P(BeneathFolderTest, AFileThatCouldNotBeWrittenWholeIsRemovedAndItsFoldersStay) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    auto handler = std::signal(SIGXFSZ, SIG_IGN);
    onKernel([&](const BeneathFolder& folder) {
        rlimit small{1000, before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
        EXPECT_EQ(code(folder.writeNew("a/b", asBytes(std::string(2000, 'x')))), EFBIG);
    });
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(tree.exists("home/Projects/a/b"));
    EXPECT_TRUE(tree.exists("home/Projects/a"));
}

TEST_P(BeneathFolderTest, TheFolderItselfIsOpenedWithoutLinks) {
    tree.link("home/way", "Projects");
    std::thread([this] {
        if (!GetParam()) forgetOpenat2();
        EXPECT_FALSE(BeneathFolder::open(tree.path("home/way")));
        EXPECT_EQ(code(BeneathFolder::open(tree.path("home/none"))), ENOENT);
        EXPECT_EQ(code(BeneathFolder::open(tree.path("home/../home"))), EXDEV);
        EXPECT_TRUE(BeneathFolder::open("/"));
    }).join();
}

} // namespace
} // namespace morvex
