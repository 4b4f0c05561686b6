#pragma once

#include "app/agents/Bezici.h"
#include "app/agents/PosluchacAgenta.h"
#include "foundation/Executor.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace morvex {

/// Carries what an agent tells from the thread that reads its output to the main thread, in order. Each job
/// that it posts there takes all that waits, so that whatever was added before the end of the output is heard
/// before those who await that end go on. Of a text the first 1,000 characters are passed on, of at most 32
/// KiB, so that it fits into every frame. When the main thread is more than 1 MiB behind, the oldest progress
/// is passed over. Held by the line callback and by its own jobs.
class ProgressQueue : public std::enable_shared_from_this<ProgressQueue> {
  public:
    struct Ohlas {
        std::optional<std::string> relace;
        std::optional<std::string> prubeh;
    };

    /// `bezici` gets the latest progress while it lives.
    ProgressQueue(Executor& main, PosluchacAgenta posluchac, std::weak_ptr<Bezici> bezici)
        : main_(main), posluchac_(std::move(posluchac)), bezici_(std::move(bezici)) {}

    /// From any thread.
    void pridej(Ohlas ohlas);

    /// At once, on the main thread.
    void ohlas(Ohlas ohlas) const;

  private:
    void predej();
    void zahodNejstarsi();

    Executor& main_;
    const PosluchacAgenta posluchac_;
    const std::weak_ptr<Bezici> bezici_;
    std::mutex zamek_;
    std::deque<Ohlas> fronta_;
    std::size_t velikost_ = 0;
};

} // namespace morvex
