#pragma once

#include "platform/ports/FolderPicker.h"

#include <QFileDialog>
#include <QPointer>

namespace morvex {

/// The desktop's folder dialog. Only one is open at a time: a further question brings it to the front and
/// gets no answer of its own. Needs a QApplication. Main thread.
class QtFolderPicker final : public FolderPicker {
  public:
    ~QtFolderPicker() override { close(); }

    Task<std::vector<std::string>> pick(Question question) override;

    /// Cancels for the user, as at the end of the program.
    void close();

  private:
    QPointer<QFileDialog> open_;
};

} // namespace morvex
