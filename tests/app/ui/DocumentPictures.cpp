#include "tests/app/ui/ShownCompanion.h"

#include <QDir>

#include <cstdlib>

namespace morvex {
namespace {

/// Draws the pictures that the documents show; checks meanwhile that they can be drawn.
class DocumentPictures : public ShownCompanion {
  protected:
    void keep(const Shown& shown, const char* name) {
        const auto& picture = shown.picture;
        ASSERT_FALSE(picture.isNull());
        const char* folder = std::getenv("MORVEX_PICTURES");
        if (!folder) return;
        QDir(QString::fromUtf8(folder)).mkpath(QStringLiteral("."));
        EXPECT_TRUE(
            picture.save(QDir(QString::fromUtf8(folder)).filePath(QString::fromUtf8(name)), "PNG", 0));
    }
};

TEST_F(DocumentPictures, OfThePairing) {
    start();
    companion->setRelayAdresa("https://relay.example.com");
    openUi();
    showState({StavParovani::CekamNaTelefon{
        R"({"pair":"an example that no phone takes","relay":"https://relay.example.com","key":"MTIzNDU2Nzg5MDEyMzQ1Njc4OTA"})",
        clock.now() + std::chrono::minutes(5)}});
    keep(card("Párování s telefonem"), "pairing-code.png");
    showState({StavParovani::OverCislo{"482 915"}});
    keep(card("Párování s telefonem"), "pairing-number.png");
}

TEST_F(DocumentPictures, OfTheWindowLightAndDark) {
    startSecured();
    openUi();
    fill();
    ask();
    window()->resize(usualWidth, 900);
    keep(pictureOf(window()), "window.png");
    useColors(true);
    keep(pictureOf(window()), "window-dark.png");
    ui->toggleMenu({});
    keep(pictureOf(menu()), "tray-dark.png");
    useColors(false);
    keep(pictureOf(menu()), "tray.png");
}

TEST_F(DocumentPictures, OfCardsAtWork) {
    startSecured();
    openUi();
    fill();
    for (const auto& [title, name] :
         {std::pair{"Integrace", "integrations.png"}, {"Poslední úkoly", "tasks.png"}})
        keep(card(title), name);
}

} // namespace
} // namespace morvex
