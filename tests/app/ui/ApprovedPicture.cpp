#include "tests/app/ui/ApprovedPicture.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace morvex {

namespace {

constexpr int tile = 10; ///< pixels of its sides; a letter is about as large
/// Of the full range of a colour's part. Letters that stand a pixel beside their place stay below it, a
/// letter or a symbol that is missing does not.
constexpr double tolerance = 0.1;

QString approvedPath(const QString& file) {
    return QDir(QStringLiteral(MORVEX_SOURCE_DIR "/tests/app/ui/pictures")).filePath(file);
}

bool approves() {
    return std::getenv("MORVEX_APPROVE") != nullptr;
}

QImage tiled(const QImage& picture) {
    return picture.convertToFormat(QImage::Format_RGB32)
        .scaled(std::max(1, picture.width() / tile), std::max(1, picture.height() / tile),
                Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

double pictureDifference(const QImage& left, const QImage& right) {
    const auto one = tiled(left);
    const auto other = tiled(right);
    int worst = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const auto here = one.pixel(x, y);
            const auto there = other.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(here) - qRed(there)),
                              std::abs(qGreen(here) - qGreen(there)), std::abs(qBlue(here) - qBlue(there))});
        }
    return worst / 255.0;
}

std::string differenceFromApproved(const QImage& picture, const QString& name) {
    const auto path = approvedPath(name + QStringLiteral(".png"));
    if (approves()) {
        return picture.convertToFormat(QImage::Format_RGB32).save(path, "PNG", 0)
                   ? std::string()
                   : "cannot write " + path.toStdString();
    }
    QImage approved(path);
    if (approved.isNull()) return "there is no approved picture " + path.toStdString();
    if (approved.size() != picture.size())
        return "is " + std::to_string(picture.width()) + " × " + std::to_string(picture.height()) + ", not " +
               std::to_string(approved.width()) + " × " + std::to_string(approved.height());
    auto difference = pictureDifference(picture, approved);
    if (difference <= tolerance) return {};
    auto seen = QDir::temp().filePath(name + QStringLiteral("-seen.png"));
    picture.save(seen);
    return "differs by " + std::to_string(difference) + "; see " + seen.toStdString();
}

std::string textDifference(const std::string& shown, const std::string& approved) {
    std::istringstream here(shown);
    std::istringstream there(approved);
    std::string line;
    std::string other;
    for (;;) {
        const bool isHere = static_cast<bool>(std::getline(here, line));
        const bool isThere = static_cast<bool>(std::getline(there, other));
        if (!isHere && !isThere) return {};
        if (!isHere) return "lacks \"" + other + "\"";
        if (!isThere) return "says \"" + line + "\" at its end";
        if (line != other) return "says \"" + line + "\", not \"" + other + "\"";
    }
}

std::string differenceFromApproved(const std::string& texts, const QString& name) {
    const auto path = approvedPath(name + QStringLiteral(".txt")).toStdString();
    if (approves()) return std::ofstream(path) << texts ? std::string() : "cannot write " + path;
    std::ifstream file(path);
    if (!file) return "there are no approved texts " + path;
    std::ostringstream approved;
    approved << file.rdbuf();
    return textDifference(texts, approved.str());
}

} // namespace morvex
