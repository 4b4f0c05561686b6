#include "platform/qt/QtMainExecutor.h"

#include "foundation/OneShot.h"
#include "foundation/TaskScope.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QThread>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

namespace morvex {
namespace {

class QtMainExecutorTest : public testing::Test {
  protected:
    /// Runs the event loop until all that was posted before has run.
    void runPosted() {
        executor_->post([] { QCoreApplication::exit(); });
        QCoreApplication::exec();
    }

    int argumentCount_ = 1;
    std::string name_ = "test";
    char* arguments_[2] = {name_.data(), nullptr};
    QCoreApplication application_{argumentCount_, arguments_};
    std::unique_ptr<QtMainExecutor> executor_ = std::make_unique<QtMainExecutor>();
};

class CallCounter final : public QObject {
  public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::User) ++calls;
        return QObject::eventFilter(watched, event);
    }

    int calls = 0;
};

Task<void> noteExecutorAfter(std::shared_ptr<OneShot<int>> shot, std::string* note) {
    int value = co_await shot->wait();
    *note = std::to_string(value) + (Executor::current() ? " on an executor" : " nowhere");
}

TEST_F(QtMainExecutorTest, RunsJobsInTheirOrderInTheEventLoop) {
    std::string order;
    for (const char* name : {"a", "b", "c"})
        executor_->post([this, &order, name] {
            order += name;
            EXPECT_TRUE(executor_->isCurrent());
        });
    EXPECT_EQ(order, "");
    EXPECT_FALSE(executor_->isCurrent());
    runPosted();
    EXPECT_EQ(order, "abc");
}

TEST_F(QtMainExecutorTest, RunsWhatAnotherThreadPostsOnTheMainThread) {
    constexpr int count = 10'000;
    int ran = 0;
    std::thread poster([&] {
        for (int i = 0; i < count; ++i)
            executor_->post([&ran, i, main = application_.thread()] {
                EXPECT_EQ(ran++, i);
                EXPECT_EQ(QThread::currentThread(), main);
            });
        executor_->post([] { QCoreApplication::exit(); });
    });
    QCoreApplication::exec();
    poster.join();
    EXPECT_EQ(ran, count);
}

TEST_F(QtMainExecutorTest, WakesTheLoopOnceForABatch) {
    CallCounter counter;
    application_.installEventFilter(&counter);
    int ran = 0;
    for (int i = 0; i < 1000; ++i) executor_->post([&ran] { ++ran; });
    runPosted();
    EXPECT_EQ(ran, 1000);
    EXPECT_LE(counter.calls, 2);
}

TEST_F(QtMainExecutorTest, AJobMayPostTheNext) {
    std::string order;
    executor_->post([&] {
        executor_->post([&] {
            order += "second";
            QCoreApplication::exit();
        });
        order += "first ";
    });
    QCoreApplication::exec();
    EXPECT_EQ(order, "first second");
}

TEST_F(QtMainExecutorTest, AnEventLoopInsideAJobGoesOnWithTheRestInOrder) {
    std::string order;
    QEventLoop inner;
    executor_->post([&] {
        order += "a";
        inner.exec();
        order += "e";
        QCoreApplication::exit();
    });
    executor_->post([&] {
        order += "b";
        executor_->post([&] {
            order += "d";
            inner.quit();
        });
    });
    executor_->post([&] { order += "c"; });
    QCoreApplication::exec();
    EXPECT_EQ(order, "abcde");
}

TEST_F(QtMainExecutorTest, AfterItsCloseJobsAreDestroyedUnrun) {
    auto held = std::make_shared<int>(1);
    bool ran = false;
    executor_->post([held, &ran] { ran = true; });
    executor_->close();
    EXPECT_EQ(held.use_count(), 1);
    executor_->post([held, &ran] { ran = true; });
    EXPECT_EQ(held.use_count(), 1);
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
}

TEST_F(QtMainExecutorTest, AJobMayCloseItAndDropTheJobsBehind) {
    bool ran = false;
    executor_->post([this] { executor_->close(); });
    executor_->post([&ran] { ran = true; });
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
}

TEST_F(QtMainExecutorTest, AWakeUpThatIsStillOnItsWayFindsNothingAfterItsEnd) {
    bool ran = false;
    executor_->post([&ran] { ran = true; });
    executor_.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
}

TEST_F(QtMainExecutorTest, ACoroutineResumesHereWhenAnotherThreadAnswers) {
    auto shot = std::make_shared<OneShot<int>>();
    std::string note;
    TaskScope scope(*executor_);
    scope.spawn(noteExecutorAfter(shot, &note));
    runPosted();
    EXPECT_EQ(note, "");
    std::thread([shot] { shot->answer(7); }).join();
    runPosted();
    EXPECT_EQ(note, "7 on an executor");
}

} // namespace
} // namespace morvex
