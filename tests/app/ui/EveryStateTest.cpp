#include "tests/app/ui/EveryState.h"

#include <algorithm>
#include <set>

namespace morvex {
namespace {

class EveryStateTest : public EveryState {
  protected:
    /// What the key reaches from where the keyboard is, until it comes round.
    std::vector<std::string> reachedBy(Qt::KeyboardModifier modifier, QQuickWindow* shown) {
        constexpr std::size_t most = 100;
        std::vector<std::string> reached;
        auto step = [&] {
            QTest::keyClick(shown, Qt::Key_Tab, modifier);
            settle();
        };
        step();
        const auto* first = shown->focusObject();
        do {
            reached.push_back(focused(shown));
            step();
        } while (shown->focusObject() != first && reached.size() < most);
        return reached;
    }

    Look tabReachesEveryControlInOrder() {
        return [this](const std::string& state, QQuickWindow* shown) {
            auto controls = usableControls(shown);
            ASSERT_FALSE(controls.empty()) << state;
            for (auto modifier : {Qt::NoModifier, Qt::ShiftModifier}) {
                auto reached = reachedBy(modifier, shown);
                if (modifier == Qt::ShiftModifier) std::ranges::reverse(reached);
                auto first = std::ranges::find(reached, controls.front());
                std::ranges::rotate(reached, first);
                EXPECT_EQ(reached, controls) << state << (modifier ? ", backwards" : "");
            }
        };
    }

    static void expectSense(QAccessibleInterface* node, const std::string& state) {
        const std::set<QAccessible::Role> roles{
            QAccessible::Window,   QAccessible::Client,      QAccessible::Grouping, QAccessible::Dialog,
            QAccessible::Heading,  QAccessible::StaticText,  QAccessible::Button,   QAccessible::CheckBox,
            QAccessible::ComboBox, QAccessible::EditableText};
        const auto name = node->text(QAccessible::Name).toStdString();
        EXPECT_TRUE(roles.contains(node->role())) << state << ": " << name << " is a " << node->role();
        EXPECT_FALSE(name.empty()) << state << ": a " << node->role() << " without a name";
        if (!isControl(node)) return;
        EXPECT_TRUE(node->state().focusable) << state << ": " << name;
        EXPECT_TRUE(node->actionInterface() || node->role() == QAccessible::EditableText)
            << state << ": " << name << " cannot be used";
    }

    /// What stands beside a control as text and is told by the control too.
    void expectNothingIsToldTwice(const std::string& state, QQuickWindow* shown) {
        const auto usable = usableControls(shown);
        std::set<std::string> told(usable.begin(), usable.end());
        walk(shown, [&](QAccessibleInterface* node) {
            // What has the keyboard may tell what came of a press.
            if (!isControl(node) || node->state().focused ||
                !told.contains(node->text(QAccessible::Name).toStdString()))
                return;
            for (const auto& line : node->text(QAccessible::Description).split(u'\n'))
                told.insert(line.toStdString());
        });
        walk(shown, [&](QAccessibleInterface* node) {
            const auto name = node->text(QAccessible::Name).toStdString();
            // Two cards wait for the key, and both say so.
            if (name == "Čekám na OpenAI klíč z iPhonu") return;
            EXPECT_FALSE(node->role() == QAccessible::StaticText && told.contains(name))
                << state << ": " << name << " is told twice";
        });
    }

    Look everythingMakesSense() {
        return [this](const std::string& state, QQuickWindow* shown) {
            walk(shown, [&](QAccessibleInterface* node) { expectSense(node, state); });
            expectNothingIsToldTwice(state, shown);
            auto controls = usableControls(shown);
            EXPECT_EQ(std::set(controls.begin(), controls.end()).size(), controls.size())
                << state << ": two controls sound alike";
        };
    }
};

TEST_F(EveryStateTest, TabReachesEveryControlInOrderWithoutAPhone) {
    withoutAPhone(tabReachesEveryControlInOrder());
}

TEST_F(EveryStateTest, TabReachesEveryControlInOrderWithAPhone) {
    withAPhone(tabReachesEveryControlInOrder());
}

TEST_F(EveryStateTest, TabReachesEveryControlOfASheetAndNothingBehindIt) {
    inSheets(tabReachesEveryControlInOrder());
}

TEST_F(EveryStateTest, TabReachesEveryControlInOrderInTheTrayWindow) {
    inTheTrayWindow(tabReachesEveryControlInOrder());
}

TEST_F(EveryStateTest, AScreenReaderFindsSenseInEverythingWithoutAPhone) {
    withoutAPhone(everythingMakesSense());
}

TEST_F(EveryStateTest, AScreenReaderFindsSenseInEverythingWithAPhone) {
    withAPhone(everythingMakesSense());
}

TEST_F(EveryStateTest, AScreenReaderFindsSenseInEverySheet) {
    inSheets(everythingMakesSense());
}

TEST_F(EveryStateTest, AScreenReaderFindsSenseInTheTrayWindow) {
    inTheTrayWindow(everythingMakesSense());
}

} // namespace
} // namespace morvex
