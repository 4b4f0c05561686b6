#include "app/ui/models/FoldersModel.h"

#include "app/ui/Localized.h"

#include <QFile>
#include <QVariantMap>

namespace morvex {

FoldersModel::FoldersModel(Slozky& slozky, CompanionState& state, TaskScope& scope)
    : slozky_(slozky), state_(state), scope_(scope), rows_(*this, [this] { return readRows(); }) {
    watch(state_.potizNastaveni);
    follow(slozky_.priZmene([this] { refresh(); }));
    follow(slozky_.priOtazce([this] { Q_EMIT asking(); }));
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
    for (const auto& potiz : {slozky_.chybaOpravneni(), state_.potizNastaveni.value()})
        if (potiz) troubles << localized(*potiz);
    return troubles.join(QChar(u'\n'));
}

QString FoldersModel::askedPath() const {
    const auto& otazka = slozky_.otazka();
    return otazka ? QFile::decodeName(otazka->slozka.c_str()) : QString();
}

QString FoldersModel::warning() const {
    const auto& otazka = slozky_.otazka();
    return otazka ? localized(otazka->popis()) : QString();
}

void FoldersModel::add() {
    scope_.spawn(slozky_.pridat());
}

void FoldersModel::allowAsked() {
    slozky_.odpovedet(Slozky::Odpoved::ano);
}

void FoldersModel::refuseAsked() {
    slozky_.odpovedet(Slozky::Odpoved::ne);
}

void FoldersModel::remove(const QString& path) {
    slozky_.odebrat(QFile::encodeName(path).toStdString());
}

} // namespace morvex
