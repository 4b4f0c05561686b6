#include "platform/qt/QtMainExecutor.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace morvex {

QtMainExecutor::~QtMainExecutor() {
    close();
}

void QtMainExecutor::post(Job job) {
    if (queue_.push(std::move(job))) wake();
}

void QtMainExecutor::close() {
    queue_.close();
    auto dropped = std::exchange(taken_, {});
}

void QtMainExecutor::wake() {
    QMetaObject::invokeMethod(&context_, [this] { runWaiting(); }, Qt::QueuedConnection);
}

void QtMainExecutor::runWaiting() {
    Running here(*this);
    std::ranges::move(queue_.takeAll(), std::back_inserter(taken_));
    // For an event loop inside one of these jobs, which has to go on with the rest.
    if (taken_.size() > 1) wake();
    while (!taken_.empty()) {
        Job job = std::move(taken_.front());
        taken_.pop_front();
        job();
    }
}

} // namespace morvex
