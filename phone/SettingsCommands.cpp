#include "phone/SettingsCommands.h"

#include "foundation/Text.h"
#include "phone/SettingsText.h"
#include "shared/base/Try.h"
#include "shared/wire/CustomAppLimits.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <span>
#include <utility>

namespace morvex::commands {

namespace {

constexpr const char* taken = "Mac to převzal.";

using Places = std::vector<CompanionPlace>;

/// Hides what the user types while it lives.
class HiddenTyping {
  public:
    explicit HiddenTyping(Keyboard& keyboard) : keyboard_(keyboard) { keyboard_.hideTyping(); }

    ~HiddenTyping() { keyboard_.showTyping(); }

    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

  private:
    Keyboard& keyboard_;
};

void ask(Phone& phone, const std::string& question) {
    if (phone.keyboard.isInteractive()) phone.terminal.prompt(question);
    phone.requestLine();
}

/// Reads one hidden line of the user. An answer to an approval that comes in between is not the secret.
Task<Result<std::string>> askSecret(Phone& phone, PhoneSession& session, Attendant& attendant,
                                    std::string question) {
    HiddenTyping hidden(phone.keyboard);
    ask(phone, question);
    while (auto event = co_await session.next(std::nullopt)) {
        if (std::holds_alternative<Inbox::EndOfInput>(*event))
            co_return failWith(ExitCode::usage, "Na vstupu chybí řádek s tajemstvím.");
        const auto* line = std::get_if<Inbox::Line>(&*event);
        if (!line) {
            co_await attendant.heard(*std::move(event));
            continue;
        }
        phone.lineArrived();
        const auto text = trim(line->text);
        if (!co_await attendant.isAnswer(text)) co_return text;
        ask(phone, question);
    }
    co_return fail(userInterrupted());
}

std::unexpected<Error> wrongWords(std::string_view command, std::string_view arguments) {
    return failWith(ExitCode::usage, "Použití: " + std::string(command) + " " + std::string(arguments));
}

Result<CompanionPreferences> changed(CompanionPreferences preferences, std::span<const std::string> words) {
    const auto& what = words.front();
    if (words.size() == 2 && what == "language") {
        preferences.language = words[1];
    } else if (words.size() == 2 && what == "voice") {
        preferences.voice = words[1];
    } else if (words.size() >= 2 && words.size() <= 3 && what == "place") {
        auto places = preferences.places.value_or(Places{});
        std::erase_if(places, [&](const CompanionPlace& each) { return equalFolded(each.name, words[1]); });
        if (words.size() == 3) places.push_back({words[1], words[2]});
        preferences.places = std::move(places);
    } else {
        return wrongWords("preferences", Options::preferencesArguments);
    }
    return preferences;
}

auto findApp(std::vector<CompanionCustomApp>& apps, const std::string& name) {
    return std::ranges::find_if(apps,
                                [&](const CompanionCustomApp& each) { return equalFolded(each.name, name); });
}

/// A setting is kept on the phone even if the Mac cannot be told now.
Task<Result<void>> keep(Phone& phone, PhoneSession& session, Attendant& attendant, auto setting) {
    auto told = co_await session.untilReady(phone.options.timeout, attendant);
    CO_CHECK(phone.settings.keep(setting));
    if (told) {
        co_await attendant.settings().offer();
        const auto& settings = attendant.settings();
        told = co_await session.until([&settings] { return settings.isSettled(); }, phone.options.timeout,
                                      attendant);
    }
    if (told)
        phone.terminal.note(taken);
    else
        phone.noteKept();
    co_return told;
}

Task<Result<void>> addApp(Phone& phone, PhoneSession& session, Attendant& attendant, std::string name,
                          std::string endpoint) {
    CompanionCustomApp app{phone.link.random.uuid().text(), std::move(name), trim(endpoint), ""};
    if (!app.isAcceptable())
        co_return failWith(ExitCode::usage,
                           "Tuhle aplikaci by Mac nepřevzal: adresa musí být https:// se jménem "
                           "serveru a žádný text delší než 4 kB.");
    CO_TRY(auto, apps, phone.settings.apps());
    auto found = findApp(apps, app.name);
    if (found == apps.end() && apps.size() == customAppLimits::mostApps)
        co_return failWith(ExitCode::usage, "Víc než " + std::to_string(customAppLimits::mostApps) +
                                                " aplikací by Mac nepřevzal.");
    CO_TRY(auto, token,
           co_await askSecret(phone, session, attendant, "Přístupový token (prázdný, když žádný není): "));
    app.token = std::move(token);
    if (found == apps.end()) {
        apps.push_back(std::move(app));
    } else {
        found->endpoint = std::move(app.endpoint);
        found->token = std::move(app.token);
    }
    co_return co_await keep(phone, session, attendant, std::move(apps));
}

Task<Result<void>> removeApp(Phone& phone, PhoneSession& session, Attendant& attendant, std::string name) {
    CO_TRY(auto, apps, phone.settings.apps());
    auto found = findApp(apps, name);
    if (found == apps.end()) co_return failWith(ExitCode::refused, "Aplikaci '" + name + "' tu nemám.");
    apps.erase(found);
    co_return co_await keep(phone, session, attendant, std::move(apps));
}

} // namespace

Task<Result<void>> key(Phone& phone, PhoneSession& session, Attendant& attendant) {
    CO_TRY(auto, value, co_await askSecret(phone, session, attendant, "OpenAI klíč ('-' ho z Macu smaže): "));
    if (value.empty()) co_return failWith(ExitCode::usage, "Klíč je prázdný. Z Macu ho smaže '-'.");
    if (value == "-") value.clear();
    CO_CHECK(co_await session.handOver({MacPayload::OpenAICredential{std::move(value)}}, "openai-credential",
                                       phone.options.timeout, attendant));
    phone.terminal.note(taken);
    co_return Result<void>{};
}

Task<Result<void>> preferences(Phone& phone, PhoneSession& session, Attendant& attendant,
                               std::vector<std::string> words) {
    if (words.empty()) co_return showPreferences(phone);
    CO_TRY(auto, before, phone.settings.preferences());
    CO_TRY(auto, after, changed(std::move(before), words));
    co_return co_await keep(phone, session, attendant, std::move(after));
}

Task<Result<void>> apps(Phone& phone, PhoneSession& session, Attendant& attendant,
                        std::vector<std::string> words) {
    const auto what = words.empty() ? "" : words.front();
    if (what == "list" && words.size() == 1) co_return showApps(phone);
    if (what == "add" && words.size() == 3)
        co_return co_await addApp(phone, session, attendant, words[1], words[2]);
    if (what == "remove" && words.size() == 2)
        co_return co_await removeApp(phone, session, attendant, words[1]);
    co_return wrongWords("apps", Options::appsArguments);
}

Result<void> showPreferences(Phone& phone) {
    TRY(auto, preferences, phone.settings.preferences());
    if (phone.options.isJson)
        phone.terminal.printJson(encode(preferences));
    else
        phone.terminal.print(preferencesLines(preferences));
    return {};
}

Result<void> showApps(Phone& phone) {
    TRY(auto, apps, phone.settings.apps());
    if (phone.options.isJson)
        phone.terminal.printJson(appsJson(apps));
    else
        phone.terminal.print(appLines(apps));
    return {};
}

} // namespace morvex::commands
