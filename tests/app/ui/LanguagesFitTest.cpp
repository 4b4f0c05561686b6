#include "tests/app/ui/EveryState.h"

#include <QFont>
#include <QGuiApplication>
#include <QQuickItem>

#include <array>

namespace morvex {
namespace {

/// Every language in the narrowest window, also where the desktop asks for text twice as large.
class LanguagesFitTest : public EveryState, public testing::WithParamInterface<int> {
  protected:
    LanguagesFitTest() {
        auto larger = usual_;
        larger.setPixelSize(GetParam());
        QGuiApplication::setFont(larger);
    }

    ~LanguagesFitTest() override { QGuiApplication::setFont(usual_); }

    /// What is cut off or stands outside of the window, by its text.
    std::vector<std::string> misfits(QQuickItem* item) {
        std::vector<std::string> found;
        if (!item->isVisible()) return found;
        const auto text = item->property("text").toString();
        // A path may be shortened in its middle.
        const bool shortens = item->property("elide").toInt() == Qt::ElideMiddle;
        const auto place = item->mapRectToScene(item->boundingRect());
        if (!shortens && item->property("truncated").toBool())
            found.push_back("cut off: " + text.toStdString());
        if (!text.isEmpty() && (place.left() < 0 || place.right() > item->window()->width()))
            found.push_back("outside: " + text.toStdString());
        for (auto* child : item->childItems())
            for (auto& misfit : misfits(child)) found.push_back(std::move(misfit));
        return found;
    }

    void expectAllFits(const std::string& state, QQuickWindow* shown) {
        (void)pictureOf(shown); // only what was drawn is laid out
        for (const auto& misfit : misfits(shown->contentItem())) ADD_FAILURE() << state << ": " << misfit;
    }

    void useLanguage(const char* code) {
        phone.send({MacPayload::Preferences{{code, {}, {}}}}, "p");
        settle();
    }

    static constexpr std::array languages{"cs", "en", "de", "fr", "es"};

  private:
    QFont usual_ = QGuiApplication::font();
};

INSTANTIATE_TEST_SUITE_P(TextOfPixels, LanguagesFitTest, testing::Values(14, 20, 28),
                         testing::PrintToStringParamName());

TEST_P(LanguagesFitTest, NothingIsCutOffInTheNarrowestWindow) {
    startSecured();
    openUi();
    fill();
    ask();
    window()->resize(window()->minimumSize());
    ui->toggleMenu({});
    for (const char* code : languages) {
        useLanguage(code);
        expectAllFits(code, window());
        expectAllFits(std::string(code) + ", tray", menu());
        showState({StavParovani::OverCislo{"482 915"}});
        expectAllFits(std::string(code) + ", a number", window());
        showState({StavParovani::CekamNaTelefon{"{}", clock.now() + std::chrono::minutes(5)}});
        expectAllFits(std::string(code) + ", a code", window());
        showState({StavParovani::Necinne{}});
    }
}

TEST_P(LanguagesFitTest, NothingIsCutOffInTheSheetsOfTheNarrowestWindow) {
    inSheets([this](const std::string& state, QQuickWindow* shown) {
        window()->resize(window()->minimumSize());
        for (const char* code : languages) {
            useLanguage(code);
            expectAllFits(std::string(code) + ", " + state, shown);
        }
        useLanguage("cs");
    });
}

} // namespace
} // namespace morvex
