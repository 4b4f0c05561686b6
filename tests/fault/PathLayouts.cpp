#include "tests/fault/PathLayouts.h"

#include <unistd.h>

namespace morvex {

namespace {

using enum Answer;

/// Root is not bound by permissions.
bool isRoot() {
    return ::geteuid() == 0;
}

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) result += text;
    return result;
}

/// `length` links that lead from one to the next, the first named "0", and the file "end" after the last.
std::string chain(int length) {
    std::string tree = "end";
    for (int i = 0; i < length; ++i)
        tree += "; " + std::to_string(i) + " -> " + (i + 1 < length ? std::to_string(i + 1) : "end");
    return tree;
}

std::vector<PathLayout> plainLayouts() {
    return {
        {"a file", "file", "file", done, exists, "", "file"},
        {"a file in folders", "a/b/file", "a/b/file", done, exists, "", "a/b/file"},
        {"nothing", "", "new", notAFile, done, "new", ""},
        {"nothing, in folders that are missing", "", "a/b/new", notAFile, done, "a/b/new", ""},
        {"a folder", "a/", "a", notAFile, exists, "", ""},
        {"the allowed folder itself", "", ".", notAFile, exists, "", ""},
        {"the largest file that is read", "big #262144", "big", done, exists, "", "big"},
        {"a file that is larger by one byte", "big #262145", "big", tooLarge, exists, "", "big"},
        {"a way through a file", "file", "file/below", notAFile, failed, "", "file"},
        {"an absolute path inside", "file", "$/home/Projects/file", done, exists, "", "file"},
        {"an absolute path outside", "", "$/outside/secret", outside, outside, "", ""},
        {"the root", "", "/", outside, outside, "", ""},
        {"the folder above", "", "..", outside, outside, "", ""},
        {"a neighbour whose name begins alike", "/home/ProjectsOld/secret", "../ProjectsOld/secret", outside,
         outside, "", ""},
        {"a pipe", "pipe |", "pipe", notAFile, exists, "", ""},
        {"a socket", "socket *", "socket", notAFile, exists, "", ""},
        {"a device", "", "/dev/zero", outside, outside, "", ""},
        {"a link to a device", "zero -> /dev/zero", "zero", outside, outside, "", ""},
        {"a document that is a folder", "x.app/file", "x.app/file", done, exists, "", ""},
        {"a file without permissions", "file; file !", "file", isRoot() ? done : failed, exists, "", "file"},
        {"a folder without permissions", "a/file; a !", "a/file", isRoot() ? done : failed,
         isRoot() ? exists : failed, "", isRoot() ? "a/file" : ""},
    };
}

std::vector<PathLayout> writtenLayouts() {
    return {
        {"a dot", "file", "./file", done, exists, "", "file"},
        {"two dots that come back", "a/; file", "a/../file", done, exists, "", "file"},
        {"two dots behind what is missing", "file", "gone/../file", done, exists, "", "file"},
        {"two dots out and in again", "file", "../Projects/file", done, exists, "", "file"},
        {"two dots out", "", "../../outside/secret", outside, outside, "", ""},
        {"two dots out of a folder", "a/", "a/../../../outside/secret", outside, outside, "", ""},
        {"more dots than folders", "", repeated("../", 50) + "etc/hostname", outside, outside, "", ""},
        {"three dots, a name", "...", "...", done, exists, "", ""},
        {"doubled slashes", "a/file", "a//file", done, exists, "", "a/file"},
        {"a slash behind a file", "file", "file/", done, exists, "", "file"},
        {"a slash behind what is missing", "", "new/", notAFile, done, "new", ""},
        {"a slash behind a folder", "a/", "a/", notAFile, exists, "", ""},
        {"the name of the folder first", "file", "Projects/file", done, exists, "", "file"},
        {"the name of the folder in another case", "file", "pROJECTS/file", done, exists, "", "file"},
        {"blanks and line breaks around", "file", " \n\tfile \r\n", done, exists, "", "file"},
        {"the home folder of the user", "file", "~/Projects/file", done, exists, "", "file"},
        {"the home folder alone", "", "~", outside, outside, "", ""},
        {"the home folder of somebody else", "", "~eva/secret", outside, outside, "", ""},
        {"the home folder of nobody, a name", "", "~nemo/new", notAFile, done, "~nemo/new", ""},
        {"another case", "File", "file", notAFile, done, "file", "File"},
        {"another normal form", "\u00e9", "e\u0301", notAFile, done, "e\u0301", "\u00e9"},
        {"the longest name", std::string(255, 'n'), std::string(255, 'n'), done, exists, "",
         std::string(255, 'n')},
        {"a longer name", "", std::string(256, 'n'), notAFile, failed, "", ""},
        {"a path longer than the system takes", "", repeated("d/", 2100) + "new", notAFile, failed, "", ""},
    };
}

std::vector<PathLayout> hiddenLayouts() {
    return {
        {"a hidden file", ".file", ".file", done, exists, "", ""},
        {"a hidden folder", ".git/config", ".git/config", done, exists, "", ""},
        {"credentials in the folder", ".ssh/id", ".ssh/id", forbidden, forbidden, "", ""},
        {"credentials behind dots", ".ssh/id; a/", "a/../.ssh/id", forbidden, forbidden, "", ""},
        {"credentials of the user", "", "~/.ssh/id", forbidden, forbidden, "", ""},
        {"credentials behind a link", "key -> $/home/.ssh/id", "key", forbidden, forbidden, "", ""},
        {"credentials below a link", "up -> ..", "up/.ssh/id", forbidden, forbidden, "", ""},
        {"credentials behind a dangling link", "key -> $/home/.ssh/gone", "key", forbidden, forbidden, "",
         ""},
        {"a name that begins like credentials", ".sshfoo", ".sshfoo", forbidden, forbidden, "", ""},
        {"a name that ends like credentials", "a.ssh/file", "a.ssh/file", done, exists, "", "a.ssh/file"},
        {"credentials in another case, another name", ".SSH/id", ".SSH/id", done, exists, "", ""},
        {"a file of passwords", "a/.netrc", "a/.netrc", forbidden, forbidden, "", ""},
        {"the vault of this program", "Morvex/vault/a", "Morvex/vault/a", forbidden, forbidden, "",
         "Morvex/vault/a"},
    };
}

std::vector<PathLayout> linkLayouts() {
    return {
        {"a link to a file", "file; link -> file", "link", done, exists, "", "file"},
        {"an absolute link", "file; link -> $/home/Projects/file", "link", done, exists, "", "file"},
        {"a link out", "link -> $/outside/secret", "link", outside, outside, "", ""},
        {"a relative link out", "link -> ../../outside/secret", "link", outside, outside, "", ""},
        {"a link out of a folder", "a/b/link -> ../../../../outside", "a/b/link/secret", outside, outside, "",
         ""},
        {"a link to a neighbour", "/home/ProjectsOld/secret; link -> ../ProjectsOld", "link/secret", outside,
         outside, "", ""},
        {"a folder that is a link out", "link -> $/outside", "link/secret", outside, outside, "", ""},
        {"something new below a link out", "link -> $/outside", "link/a/new", outside, outside, "", ""},
        {"a folder that is a link", "a/file; link -> a", "link/file", done, exists, "", "a/file"},
        {"something new below a link", "a/; link -> a", "link/new", notAFile, done, "a/new", ""},
        {"a link with a slash behind", "a/file; link -> a/", "link/file", done, exists, "", "a/file"},
        {"two dots behind a link, by the text", "file; link -> $/outside", "link/../file", done, exists, "",
         "file"},
        {"a chain of links", "file; a -> b; b -> c; c -> file", "a", done, exists, "", "file"},
        {"a chain of links out", "a -> b; b -> c; c -> $/outside/secret", "a", outside, outside, "", ""},
        {"the longest chain of links", chain(40), "0", done, exists, "", "end"},
        {"a longer chain of links", chain(41), "0", outside, outside, "", "end"},
        {"a link to itself", "loop -> loop", "loop", outside, outside, "", ""},
        {"two links in a circle", "a -> b; b -> a", "a/file", outside, outside, "", ""},
        {"a link to its own folder", "file; loop -> .", "loop/loop/loop/file", done, exists, "", "file"},
        {"a link to the allowed folder", "file; self -> $/home/Projects", "self/file", done, exists, "",
         "file"},
        {"a link up and the way back", "file; up -> ..", "up/Projects/file", done, exists, "", "file"},
        {"a link to the root", "root -> /", "root/etc/hostname", outside, outside, "", ""},
        {"a dangling link", "link -> new", "link", notAFile, done, "new", ""},
        {"a dangling link out", "link -> $/outside/new", "link", outside, outside, "", ""},
        {"a dangling link into a missing folder", "link -> gone/new", "link", notAFile, done, "gone/new", ""},
        {"a dangling link with dots out", "link -> gone/../../../outside/secret", "link", outside, outside,
         "", ""},
        {"a hard link", "file; hard = file", "hard", done, exists, "", "file, hard"},
        {"a hard link, which is a file of each of its folders", "/shared/file; hard = /shared/file", "hard",
         done, exists, "", "hard"},
        {"the root of this process", "file; magic -> /proc/self/root", "magic$/home/Projects/file", done,
         exists, "", "file"},
        {"the root of this process, outside", "magic -> /proc/self/root", "magic/etc/hostname", outside,
         outside, "", ""},
        {"an open file of this process", "magic -> /proc/self/fd/1", "magic", outside, outside, "", ""},
        {"the folder of this process", "magic -> /proc/self/cwd", "magic/x", outside, outside, "", ""},
    };
}

std::vector<PathLayout> allowedLayouts() {
    const std::vector<std::string> two = {"home/Projects", "home/Second"};
    return {
        {"no folder is allowed", "file", "file", failed, failed, "", std::nullopt, {}},
        {"no folder is allowed, an absolute path",
         "file",
         "$/home/Projects/file",
         outside,
         outside,
         "",
         std::nullopt,
         {}},
        {"an allowed folder that is gone", "", "file", notAFile, failed, "", "", {"gone"}},
        {"an allowed folder that is a link",
         "/link -> $/home/Projects; file",
         "file",
         done,
         exists,
         "",
         "file",
         {"link"}},
        {"an allowed folder that is a file",
         "file",
         "file",
         notAFile,
         failed,
         "",
         "",
         {"home/Projects/file"}},
        {"two folders, and none is named", "file; /home/Second/", "file", failed, failed, "", std::nullopt,
         two},
        {"two folders, and one is named", "file; /home/Second/", "Projects/file", done, exists, "",
         std::nullopt, two},
        {"two folders, and a link from one to the other", "file; /home/Second/link -> ../Projects/file",
         "Second/link", done, exists, "", std::nullopt, two},
        {"a folder in a folder",
         "file",
         "home/Projects/file",
         done,
         exists,
         "",
         std::nullopt,
         {"home", "home/Projects"}},
        {"the allowed home folder, credentials", "", ".ssh/id", forbidden, forbidden, "", "", {"home"}},
        {"an allowed folder of credentials", "", "id", forbidden, forbidden, "", "id", {"home/.ssh"}},
    };
}

std::vector<PathLayout> toldLayouts() {
    const std::vector<std::string> one = {"home/Projects"};
    const std::vector<std::string> two = {"home/Projects", "home/Second"};
    const std::string file = "file; /home/Second/";
    const std::string link = "file; /home/Second/link -> ../Projects/file";
    return {
        {"two folders, one is told", file, "file", done, exists, "", "file", two, "Projects"},
        {"two folders, one is told in other letters", file, "file", done, exists, "", "file", two,
         " PROJECTS "},
        {"two folders, one is told and begins the path too", file, "Projects/file", done, exists, "", "file",
         two, "Projects"},
        {"two folders, the second is told", "file; /home/Second/; /home/Second/other = file", "other", done,
         exists, "", "other", two, "Second"},
        {"two folders, the path begins with the other one", link, "Second/link", done, exists, "", "file",
         two, "Projects"},
        {"a folder that nobody allowed is told", file, "file", failed, failed, "", std::nullopt, two,
         "Third"},
        {"the same, and the path begins with an allowed one", file, "Projects/file", done, exists, "",
         std::nullopt, two, "Third"},
        {"the same, and the path is absolute", file, "$/home/Projects/file", done, exists, "", std::nullopt,
         two, "Third"},
        {"the only folder, and another one is told", "file", "file", failed, failed, "", std::nullopt, one,
         "Third"},
        {"a told folder that is a way out", "", "secret", failed, failed, "", std::nullopt, one,
         "../../outside"},
        {"a told folder that is a way out of an allowed one", "", "secret", failed, failed, "", std::nullopt,
         one, "Projects/../../outside"},
        {"a told folder that is an absolute path", "", "secret", failed, failed, "", std::nullopt, one,
         "$/outside"},
        {"a told folder that is the absolute path of an allowed one", "file", "file", failed, failed, "",
         std::nullopt, one, "$/home/Projects"},
        {"a told folder that is a folder within", "a/file", "file", failed, failed, "", std::nullopt, one,
         "a"},
        {"a told folder, and a path out of it", "", "../../outside/secret", outside, outside, "", "", two,
         "Projects"},
        {"a told folder, and a path to the other one's file", link, "../Second/link", done, exists, "",
         "file", two, "Projects"},
        {"a told folder, and credentials", ".ssh/id", ".ssh/id", forbidden, forbidden, "", "", two,
         "Projects"},
    };
}

} // namespace

std::vector<PathLayout> pathLayouts() {
    std::vector<PathLayout> all;
    for (auto* part : {plainLayouts, writtenLayouts, hiddenLayouts, linkLayouts, allowedLayouts, toldLayouts})
        for (auto& layout : part()) all.push_back(std::move(layout));
    return all;
}

} // namespace morvex
