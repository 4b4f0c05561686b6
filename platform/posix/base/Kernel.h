#pragma once

#include <cstddef>
#include <string>

/// What every Unix can do, each in its own way. The bodies stand in `platform/<system>/kernel`.
namespace morvex::kernel {

/// Names the calling thread for debuggers and `top`. Long names are cut: Linux has room for 15 bytes.
void nameThread(const std::string& name);

/// The flag that opens a folder for passing through, which needs no permission to list it.
extern const int passThrough;

/// Opens the folder `way` beneath an open folder in one step, for passing through, without following a link.
/// -1 with an errno of `openat`; ENOSYS or EPERM where the system has no such call or forbids it.
int openFolderBeneath(int folder, const char* way);

/// Renames a file unless `name` is taken: EEXIST. 0, or -1 with an errno of `rename`.
int renameUnlessTaken(const char* path, const char* name);

/// Gives unused memory back to the system.
void releaseMemory();

/// Has blocks longer than this go back to the system as soon as they are freed.
void releaseBlocksFrom(std::size_t bytes);

} // namespace morvex::kernel
