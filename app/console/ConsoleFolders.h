#pragma once

#include "app/console/ConsoleFolderPicker.h"
#include "app/console/ConsoleOutput.h"
#include "app/execution/Slozky.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"

#include <memory>
#include <string>

namespace morvex {

/// The console's commands for allowed folders, and the question before a folder that reaches as far as the
/// home folder. Main thread.
class ConsoleFolders {
  public:
    struct Services {
        Slozky& slozky;
        ConsoleFolderPicker& picker;
        const StandardFolders& folders;
        TaskScope& scope; ///< runs what a command starts
        const ConsoleOutput& output;
    };

    /// All references outlive this object.
    explicit ConsoleFolders(Services services);

    void print() const;
    void allow(const std::string& path);
    void disallow(const std::string& path);
    void answer(Slozky::Odpoved odpoved);

  private:
    void printQuestion() const;
    Task<void> allowAndShow();

    Services services_;
    Connection asked_;
};

} // namespace morvex
