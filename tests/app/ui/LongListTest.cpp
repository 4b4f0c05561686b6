#include "app/ui/models/RecordTitle.h"
#include "tests/app/ui/ShownCompanion.h"

#include <QQuickItem>
#include <QSignalSpy>
#include <QWheelEvent>

#include <filesystem>
#include <fstream>
#include <iomanip>

namespace morvex {
namespace {

/// Lists that a phone has made long.
class LongListTest : public ShownCompanion {
  protected:
    /// Leaves this many notes on the disk, "Poznámka 0" the newest.
    void putNotes(int count) {
        const auto folder = std::filesystem::path(folders.applicationSupport()) / "Morvex";
        std::filesystem::create_directories(folder);
        std::ofstream file(folder / "notes-from-iphone.json");
        file << R"({"schemaVersion":1,"notes":[)";
        for (int number = 0; number < count; ++number)
            file << (number ? "," : "") << R"({"id":"00000000-0000-4000-8000-)" << std::setw(12)
                 << std::setfill('0') << number << R"(","title":")" << title(number)
                 << R"(","body":"Text","createdAt":0,"updatedAt":)" << count - number << R"(,"revision":1})";
        file << "]}";
    }

    static std::string title(int number) { return "Poznámka " + std::to_string(number); }

    void openWith(int notes) {
        putNotes(notes);
        startSecured();
        openWithKeyboard();
        (void)pictureOf(window()); // laid out
    }

    static void gather(QQuickItem* item, const char* type, std::vector<QQuickItem*>& found) {
        if (QByteArray(item->metaObject()->className()).startsWith(type)) found.push_back(item);
        for (auto* child : item->childItems()) gather(child, type, found);
    }

    std::vector<QQuickItem*> items(const char* type) {
        std::vector<QQuickItem*> found;
        gather(window()->contentItem(), type, found);
        return found;
    }

    /// Those that wait for another use too.
    std::vector<QQuickItem*> rows() { return items("RecordRow"); }

    QQuickItem* list() { return items("QQuickListView").front(); }

    static double scrolled(const QQuickItem* area) { return area->property("contentY").toDouble(); }

    QQuickItem* page() { return window()->contentItem()->childItems().front(); }

    static QRectF place(QQuickItem* item) { return item->mapRectToScene(item->boundingRect()); }

    void turnWheel(int delta) {
        const auto at = place(list()).intersected(QRectF({0, 0}, window()->size())).center();
        QWheelEvent event(at, window()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        constexpr quint64 apart = 100;
        event.setTimestamp(turned_ += apart); // the speed comes of it
        QCoreApplication::sendEvent(window(), &event);
        settle();
    }

    static bool isAtRest(const QQuickItem* area) { return !area->property("moving").toBool(); }

    static Task<void> noteTaken(Task<bool> taken) { EXPECT_TRUE(co_await std::move(taken)); }

    /// Turns the wheel until this is so; false when it does not come about.
    bool turnWheelUntil(int delta, const std::function<bool()>& condition) {
        constexpr int mostTurns = 200;
        constexpr int mostWait = 200;
        for (int turn = 0; turn < mostTurns && !condition(); ++turn) {
            turnWheel(delta);
            (void)QTest::qWaitFor([&] { return condition() || isAtRest(list()); }, mostWait);
        }
        return condition();
    }

    /// Whether what has the keyboard is whole in the list and in the window.
    bool isInSight() {
        const auto row = place(qobject_cast<QQuickItem*>(window()->focusObject()));
        return place(list()).contains(row) && QRectF(QPointF(0, 0), window()->size()).contains(row);
    }

  private:
    quint64 turned_ = 0; ///< ms, when the wheel was turned last
};

TEST_F(LongListTest, TenThousandNotesMakeNoMoreRowsThanThereIsRoomFor) {
    constexpr int count = 10'000;
    openWith(count);
    EXPECT_EQ(ui->model().notes()->rows()->rowCount(), count);
    EXPECT_GE(rows().size(), 6U);
    EXPECT_LE(rows().size(), 20U);
    goTo(title(0));
    give(Qt::Key_End);
    EXPECT_EQ(focused(), title(count - 1));
    EXPECT_TRUE(isInSight());
    EXPECT_LE(rows().size(), 40U);
}

TEST_F(LongListTest, ARowTakesNoMoreOfALongTitleThanThereIsRoomFor) {
    start();
    openUi();
    const std::string title(1'000'000, 'a');
    const auto id = random.uuid();
    (void)ended(features->records.poznamky().prijmout({id, title, "Text", clock.now(), clock.now(), 1, {}}));
    settle();
    auto* model = ui->model().notes();
    const auto row = model->rows()->data(model->rows()->index(0), Qt::UserRole).value<RecordTitle>();
    EXPECT_EQ(row.title.size(), RecordTitle::longestTitle);
    EXPECT_EQ(model->find(row.id)[QStringLiteral("title")].toString().toStdString(), title)
        << "the whole of it is for who opens it";
}

TEST_F(LongListTest, TabGoesFromRowToRowThroughAllOfThem) {
    constexpr int count = 30;
    openWith(count);
    goTo(title(0));
    for (int number = 1; number < count; ++number) {
        give(Qt::Key_Tab);
        EXPECT_EQ(focused(), title(number));
        EXPECT_TRUE(isInSight()) << number;
    }
    give(Qt::Key_Tab);
    EXPECT_FALSE(focused().starts_with("Poznámka")) << focused();
    for (int number = count; number-- > 0;) {
        give(Qt::Key_Backtab);
        EXPECT_EQ(focused(), title(number));
        EXPECT_TRUE(isInSight()) << number;
    }
}

TEST_F(LongListTest, KeysGoThroughItAndBeyondItsEndScrollThePage) {
    constexpr int count = 30;
    openWith(count);
    goTo(title(0));
    for (const auto& [key, number] : {std::pair{Qt::Key_Down, 1},
                                      {Qt::Key_Down, 2},
                                      {Qt::Key_Up, 1},
                                      {Qt::Key_PageDown, 5},
                                      {Qt::Key_PageUp, 1},
                                      {Qt::Key_End, count - 1},
                                      {Qt::Key_PageUp, count - 5},
                                      {Qt::Key_Home, 0}}) {
        give(key);
        EXPECT_EQ(focused(), title(number)) << key;
        EXPECT_TRUE(isInSight()) << key;
    }
    const auto before = scrolled(page());
    give(Qt::Key_Up);
    EXPECT_LT(scrolled(page()), before);
    EXPECT_EQ(focused(), title(0));
}

TEST_F(LongListTest, AShortListLeavesTheKeysToThePage) {
    openWith(3);
    goTo(title(0));
    give(Qt::Key_End);
    EXPECT_EQ(focused(), title(0));
    EXPECT_EQ(scrolled(page()), page()->property("contentHeight").toDouble() - page()->height());
    EXPECT_FALSE(list()->clip()) << "nothing of it is cut off";
}

TEST_F(LongListTest, AWheelScrollsItToItsEndAndThenThePage) {
    openWith(30);
    goTo(title(0));
    const auto before = scrolled(page());
    turnWheel(120);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scrolled(page()) < before && isAtRest(page()); }))
        << "it is at its beginning";
    goTo(title(0));
    const auto there = scrolled(page());
    EXPECT_TRUE(turnWheelUntil(-120, [this] { return list()->property("atYEnd").toBool(); }));
    EXPECT_EQ(scrolled(page()), there);
    EXPECT_TRUE(turnWheelUntil(-120, [&] { return scrolled(page()) > there; }));
}

TEST_F(LongListTest, TheKeyboardStaysInTheCardWhenItsRowIsScrolledAwayOrGoes) {
    openWith(30);
    goTo(title(0));
    EXPECT_TRUE(turnWheelUntil(-120, [this] { return focused() == "Poznámky Morvex"; }));
    give(Qt::Key_Tab);
    EXPECT_NE(focused(), title(0)) << "on from where the list is";
    EXPECT_TRUE(focused().starts_with("Poznámka ")) << focused();
    (void)ended(features->records.poznamky().smazat(focused()));
    settle();
    EXPECT_EQ(focused(), "Poznámky Morvex");
}

TEST_F(LongListTest, TheKeyboardStaysInTheCardWhenAllRowsAreNewOnes) {
    constexpr int count = 300;
    openWith(count);
    goTo(title(0));
    QSignalSpy renewed(ui->model().notes()->rows(), &RowList::modelReset);
    auto& store = features->records.poznamky();
    for (int number = 1; number < count; number += 2) {
        auto gone = *store.note(store.ids()[static_cast<std::size_t>(number)]);
        ++gone.revision;
        gone.deletedAt = clock.now();
        executor.start(noteTaken(store.prijmout(gone)));
    }
    settle();
    EXPECT_EQ(renewed.size(), 1);
    EXPECT_EQ(store.notes().size(), count / 2U);
    EXPECT_EQ(focused(), "Poznámky Morvex");
    give(Qt::Key_Tab);
    EXPECT_EQ(focused(), title(0));
}

TEST_F(LongListTest, APressOpensTheRowThatItMeetsAlsoAtTheEdge) {
    openWith(30);
    page()->setProperty("contentY", scrolled(page()) + place(list()).bottom() - window()->height());
    settle();
    const auto shown = place(list());
    const auto all = rows();
    const auto cut = std::ranges::find_if(all, [&](QQuickItem* row) {
        return place(row).top() < shown.bottom() - 8 && place(row).bottom() > shown.bottom();
    });
    ASSERT_NE(cut, all.end());
    const auto number = (*cut)->property("index").toInt();
    const auto at = QPointF(shown.center().x(), place(*cut).top() + 4).toPoint();
    QTest::mousePress(window(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseMove(window(), at + QPoint(1, 0)); // as a hand does
    QTest::mouseRelease(window(), Qt::LeftButton, Qt::NoModifier, at + QPoint(1, 0));
    settle();
    EXPECT_EQ(names(QAccessible::Dialog), std::vector{title(number)});
}

TEST_F(LongListTest, RowsAreToldInTheirOrderWhateverCameWhen) {
    openWith(5);
    clock.advance(std::chrono::seconds(1));
    (void)ended(features->records.poznamky().vytvorit("Poznámka nová", "Text"));
    clock.advance(std::chrono::seconds(1));
    (void)ended(features->records.poznamky().upravit("Poznámka 3", {}, "Text"));
    settle();
    auto told = names(QAccessible::Button);
    std::erase_if(told, [](const auto& name) { return !name.starts_with("Poznámka "); });
    EXPECT_EQ(told,
              (std::vector<std::string>{title(3), "Poznámka nová", title(0), title(1), title(2), title(4)}));
}

} // namespace
} // namespace morvex
