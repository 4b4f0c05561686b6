#pragma once

#include <QImage>
#include <QString>

#include <string>

namespace morvex {

/// How far two pictures of one size differ in their worst tile of ten by ten pixels and in their worst part
/// of a colour, from 0 to 1.
double pictureDifference(const QImage& left, const QImage& right);

/// Compares with the approved picture of this name, so tolerantly that another build of the font passes and a
/// missing line does not. What is wrong in words; empty when nothing is. With MORVEX_APPROVE in the
/// environment the picture becomes the approved one.
std::string differenceFromApproved(const QImage& picture, const QString& name);

} // namespace morvex
