#include "app/ui/models/FoldersModel.h"

#include "app/ui/Localized.h"

#include <QFile>
#include <QVariantMap>

namespace morvex {

FoldersModel::FoldersModel(Slozky& slozky, CompanionState& state, TaskScope& scope)
    : slozky_(slozky), state_(state), scope_(scope), rows_(*this, [this] { return readRows(); }) {
    watch(state_.settingsTrouble);
    follow(slozky_.priZmene([this] { refresh(); }));
    follow(slozky_.onQuestion([this] { Q_EMIT asking(); }));
}

QVariantList FoldersModel::readRows() const {
    QVariantList rows;
    const auto names = slozky_.aliasy();
    auto name = names.begin();
    for (const auto& path : slozky_.povolene())
        rows.push_back(QVariantMap{
            {QStringLiteral("id"), QFile::decodeName(path.c_str())},
            {QStringLiteral("path"), QFile::decodeName(path.c_str())},
            {QStringLiteral("name"), QString::fromStdString(*name++)},
            {QStringLiteral("needsRenewal"), slozky_.vyzadujiObnoveni().contains(path)},
        });
    return rows;
}

bool FoldersModel::anyNeedsRenewal() const {
    return !slozky_.vyzadujiObnoveni().empty();
}

QString FoldersModel::trouble() const {
    QStringList troubles;
    for (const auto& potiz : {slozky_.chybaOpravneni(), state_.settingsTrouble.value()})
        if (potiz) troubles << localized(*potiz);
    return troubles.join(QChar(u'\n'));
}

QString FoldersModel::askedPath() const {
    const auto& question = slozky_.question();
    return question ? QFile::decodeName(question->slozka.c_str()) : QString();
}

QString FoldersModel::warning() const {
    const auto& question = slozky_.question();
    return question ? localized(question->popis()) : QString();
}

void FoldersModel::add() {
    scope_.spawn(slozky_.pridat());
}

void FoldersModel::allowAsked() {
    slozky_.answerQuestion(Slozky::Odpoved::yes);
}

void FoldersModel::refuseAsked() {
    slozky_.answerQuestion(Slozky::Odpoved::no);
}

void FoldersModel::remove(const QString& path) {
    slozky_.odebrat(QFile::encodeName(path).toStdString());
}

} // namespace morvex
