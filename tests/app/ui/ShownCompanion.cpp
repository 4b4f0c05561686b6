#include "tests/app/ui/ShownCompanion.h"

#include "tests/app/ui/ApprovedPicture.h"

#include <QQuickItem>

#include <utility>

namespace morvex {

namespace {

QQuickItem* findCard(QQuickItem* item, const QString& title) {
    if (item->property("title").toString() == title && item->property("glyph").isValid()) return item;
    for (auto* child : item->childItems())
        if (auto* found = findCard(child, title)) return found;
    return nullptr;
}

/// The texts that the item shows, without those that are there but not seen.
std::string textsIn(QQuickItem& item) {
    if (!item.isVisible() || item.opacity() == 0) return {};
    std::string texts;
    const bool isTyped = item.inherits("QQuickTextInput");
    if (isTyped || item.inherits("QQuickText") || item.inherits("QQuickTextEdit"))
        texts = item.property(isTyped ? "displayText" : "text").toString().toStdString() + "\n";
    for (auto* child : item.childItems()) texts += textsIn(*child);
    return texts;
}

} // namespace

ShownCompanion::~ShownCompanion() {
    useColors(false);
}

void ShownCompanion::useColors(bool dark) {
    colors.prefer(dark ? ColorScheme::Preference::dark : ColorScheme::Preference::none);
}

void ShownCompanion::fill() {
    companion->setRelayAdresa("https://relay.example");
    allowFolder("Dokumenty");
    auto web = allowFolder("web");
    auto& history = features->agents.historie();
    auto begin = [&](const char* tool, const char* title) {
        clock.advance(std::chrono::minutes(7));
        return history.zaloz({{}, {}, tool, title, title, web}).workItemID;
    };
    history.dokonci(begin("codex", "Přelož stránku do angličtiny"), "Přeloženo 14 odstavců.", "relace-1");
    history.selhal(begin("claude-code", "Najdi, proč padá sestavení"), Sentence("Agent neodpověděl včas."));
    begin("claude-code", "Přidej na web tmavý režim");
    (void)ended(features->records.poznamky().vytvorit("Nákup", "Mléko\nChléb\nMáslo"));
    phone.pong();
    executor.runUntilIdle();
    clock.advance(std::chrono::hours(3));
    (void)ended(features->records.poznamky().vytvorit("Nápady na výlet", "Říp, Kokořín, Máchovo jezero"));
    (void)ended(
        features->records.souhrny().prijmout({Uuid::parse("11111111-1111-4111-8111-111111111111").value(),
                                              "Týden 2",
                                              "Dvě schůzky, odevzdaný návrh.",
                                              clock.now(),
                                              clock.now() - std::chrono::days(7),
                                              clock.now(),
                                              {"Kalendář", "Pošta"},
                                              1}));
    features->agents.stav().claude = AgentStatus{true, "2.1.0", "/usr/bin/claude", {}};
    features->agents.stav().codex =
        AgentStatus{false, {}, {}, Sentence("Codex jsem na tomto počítači nenašel.")};
}

void ShownCompanion::haveCalendars() {
    calendars.has = {{"a", "Osobní", "Tento počítač", true},
                     {"b", "Rodina", "eva.novakova@example.com", true},
                     {"c", "Práce", "eva.novakova@example.com", true},
                     {"d", "Svátky v České republice", "eva.novakova@example.com", false}};
}

void ShownCompanion::addApps() {
    // The app of the phone is asked when its list comes, and again when the other one is added.
    const HttpReply weather{200, R"({"result":{"tools":[{"name":"now"},{"name":"week"}]}})", {}};
    const HttpReply store{200, R"({"result":{"tools":[{"name":"find"}]}})", {}};
    http.replies.assign({weather, store, weather});
    phone.send({MacPayload::CustomApps{{{"a", "Počasí", "https://p.example/api/mcp", ""}}}}, "c");
    settle();
    ui->model().customApps()->save({}, QStringLiteral("Sklad"),
                                   QStringLiteral("https://sklad.example/api/mcp"), {});
    settle();
}

void ShownCompanion::addMailAccounts() {
    auto& smtp = features->mail.smtp();
    EXPECT_TRUE(ended(
        smtp.ulozit({"", "Práce", "eva@example.com", "Eva", "imap.example.com", "smtp.example.com"}, "x")));
    EXPECT_TRUE(ended(smtp.ulozit({"", "Doma", "eva.novakova@example.com", "", "", "smtp.a"}, "x")));
    settle();
}

void ShownCompanion::ask() {
    ask("Odeslat e-mail Janě",
        "Komu: jana@example.com\nPředmět: Zítřejší schůzka\n\nAhoj Jano, platí ta desátá hodina?");
}

void ShownCompanion::ask(const std::string& title, const std::string& detail) {
    executor.start(note(companion->schvalovani().pozadat("mac.mail.send", title, "Nahlas.", detail)));
    settle();
}

void ShownCompanion::expectApproved(const Shown& shown, const std::string& name) {
    EXPECT_EQ(differenceFromApproved(shown.texts, QString::fromStdString(name)), "") << name;
    const auto scale = static_cast<int>(window()->effectiveDevicePixelRatio() * 100);
    const auto suffix = scale == 100 ? QString() : QStringLiteral("-%1").arg(scale);
    EXPECT_EQ(differenceFromApproved(shown.picture, QString::fromStdString(name) + suffix), "") << name;
}

void ShownCompanion::showState(StavParovani state) {
    companion->stav().parovani = std::move(state);
    settle();
}

ShownCompanion::Shown ShownCompanion::column(int width) {
    auto* content = window()->contentItem()->childItems().front();
    window()->resize(width, window()->height());
    (void)drawn(window()); // its height follows its width
    window()->resize(width, static_cast<int>(content->property("contentHeight").toReal()));
    return pictureOf(window());
}

ShownCompanion::Shown ShownCompanion::card(const std::string& title) {
    auto whole = column();
    auto* item = findCard(window()->contentItem(), QString::fromStdString(title));
    EXPECT_NE(item, nullptr) << title;
    if (!item) return {};
    auto place = item->mapRectToScene(item->boundingRect());
    auto ratio = window()->effectiveDevicePixelRatio();
    return {whole.picture.copy(QRectF(place.topLeft() * ratio, place.size() * ratio).toRect()),
            textsIn(*item)};
}

ShownCompanion::Shown ShownCompanion::pictureOf(QQuickWindow* shown) {
    auto picture = drawn(shown);
    return {std::move(picture), textsIn(*shown->contentItem())};
}

QImage ShownCompanion::drawn(QQuickWindow* shown) {
    // Layouts within layouts come to rest only after some drawn frames.
    constexpr int mostFrames = 50;
    QImage before;
    settle();
    replaceChance(*shown->contentItem());
    auto picture = shown->grabWindow();
    for (int frame = 0; frame < mostFrames && picture != before; ++frame) {
        before = picture;
        settle();
        picture = shown->grabWindow();
    }
    return picture;
}

void ShownCompanion::replaceChance(QQuickItem& item) {
    const std::pair<std::string, QString> replacements[] = {
        {temporary.path().string(), QStringLiteral("/home/jana")},
        {mac ? mac->deviceID().rawValue : std::string(), QStringLiteral("5SFCPEHWQAW7N2MN3CCAB4CDUI")},
        {phone.identity.deviceID().rawValue, QStringLiteral("PUYGSNR7ECXK2HNZOQOTDHVHFI")},
    };
    const auto shown = item.property("text").toString();
    auto text = shown;
    for (const auto& [chance, fixed] : replacements)
        if (!chance.empty()) text.replace(QString::fromStdString(chance), fixed);
    if (text != shown) item.setProperty("text", text);
    for (auto* child : item.childItems()) replaceChance(*child);
}

} // namespace morvex
