#include "platform/qt/QtMainExecutor.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <iterator>
#include <utility>

namespace morvex {

QtMainExecutor::~QtMainExecutor() {
    close();
}

void QtMainExecutor::post(Job job) {
    if (queue_.push(std::move(job))) target_.wake();
}

void QtMainExecutor::close() {
    queue_.close();
    auto dropped = std::exchange(taken_, {});
}

void QtMainExecutor::runWaiting() {
    Running here(*this);
    std::ranges::move(queue_.takeAll(), std::back_inserter(taken_));
    // A job may run its own event loop, which then has to run the remaining jobs.
    if (taken_.size() > 1) target_.wake();
    while (!taken_.empty()) {
        Job job = std::move(taken_.front());
        taken_.pop_front();
        job();
    }
}

// Posted under our own lock, because the thread sanitizer does not see Qt's locks.
void QtMainExecutor::Target::wake() {
    std::lock_guard lock(handOver_);
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool QtMainExecutor::Target::event(QEvent* event) {
    {
        std::lock_guard lock(handOver_);
        if (event->type() != QEvent::User) return QObject::event(event);
    }
    executor_.runWaiting();
    return true;
}

} // namespace morvex
