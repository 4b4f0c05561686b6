#include "tests/app/ui/ApprovedPicture.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace morvex {

namespace {

constexpr int coarse = 6;          ///< pixels that count as one
constexpr double tolerance = 0.05; ///< of the full range, for the worst hundredth of them

QImage coarsened(const QImage& picture) {
    return picture
        .scaled(std::max(1, picture.width() / coarse), std::max(1, picture.height() / coarse),
                Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_Grayscale8);
}

double worstHundredth(const QImage& left, const QImage& right) {
    std::vector<int> differences;
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            differences.push_back(std::abs(qGray(left.pixel(x, y)) - qGray(right.pixel(x, y))));
    auto rank = differences.begin() + static_cast<std::ptrdiff_t>(differences.size() * 99 / 100);
    std::nth_element(differences.begin(), rank, differences.end());
    return *rank / 255.0;
}

} // namespace

std::string differenceFromApproved(const QImage& picture, const QString& name) {
    const QDir folder(QStringLiteral(MORVEX_SOURCE_DIR "/tests/app/ui/pictures"));
    auto path = folder.filePath(name + QStringLiteral(".png"));
    if (std::getenv("MORVEX_APPROVE")) {
        return picture.convertToFormat(QImage::Format_RGB32).save(path, "PNG", 0)
                   ? std::string()
                   : "cannot write " + path.toStdString();
    }
    QImage approved(path);
    if (approved.isNull()) return "there is no approved picture " + path.toStdString();
    if (approved.size() != picture.size())
        return "is " + std::to_string(picture.width()) + " × " + std::to_string(picture.height()) + ", not " +
               std::to_string(approved.width()) + " × " + std::to_string(approved.height());
    auto difference = worstHundredth(coarsened(picture), coarsened(approved));
    if (difference <= tolerance) return {};
    auto seen = QDir::temp().filePath(name + QStringLiteral("-seen.png"));
    picture.save(seen);
    return "differs by " + std::to_string(difference) + "; see " + seen.toStdString();
}

} // namespace morvex
