#include "app/ui/models/FoldersModel.h"

#include "app/ui/Localized.h"
#include "foundation/Paths.h"

#include <QFile>
#include <QPointer>
#include <QVariantMap>

namespace morvex {

FoldersModel::FoldersModel(Slozky& slozky, CompanionState& state, TaskScope& scope)
    : slozky_(slozky), state_(state), scope_(scope), rows_(*this, [this] { return readRows(); }) {
    watch(state_.potizNastaveni);
    slozky_.priZmene([self = QPointer<FoldersModel>(this)] {
        if (self) self->refresh();
    });
}

QVariantList FoldersModel::readRows() const {
    QVariantList rows;
    for (const auto& path : slozky_.povolene())
        rows.push_back(QVariantMap{
            {QStringLiteral("id"), QFile::decodeName(path.c_str())},
            {QStringLiteral("path"), QFile::decodeName(path.c_str())},
            {QStringLiteral("name"), QFile::decodeName(paths::lastComponent(path).c_str())},
            {QStringLiteral("needsRenewal"), slozky_.vyzadujiObnoveni().contains(path)},
        });
    return rows;
}

bool FoldersModel::anyNeedsRenewal() const {
    return !slozky_.vyzadujiObnoveni().empty();
}

QString FoldersModel::trouble() const {
    if (const auto& chyba = slozky_.chybaOpravneni()) return localized(*chyba);
    return localized(state_.potizNastaveni.value().value_or(std::string()));
}

void FoldersModel::add() {
    scope_.spawn(slozky_.pridat());
}

void FoldersModel::remove(const QString& path) {
    slozky_.odebrat(QFile::encodeName(path).toStdString());
}

} // namespace morvex
