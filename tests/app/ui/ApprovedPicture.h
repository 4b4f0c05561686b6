#pragma once

#include <QImage>
#include <QString>

#include <string>

namespace morvex {

/// How far two pictures of one size differ in their worst tile of ten by ten pixels and in their worst part
/// of a colour, from 0 to 1.
double pictureDifference(const QImage& left, const QImage& right);

/// Compares with the approved picture of this name, so tolerantly that another build of the font passes and a
/// missing line does not. Another digit passes too: texts are compared by their value. What is wrong in
/// words; empty when nothing is. With MORVEX_APPROVE in the environment the picture becomes the approved one.
std::string differenceFromApproved(const QImage& picture, const QString& name);

/// The first line in which the texts differ, in words; empty when there is none.
std::string textDifference(const std::string& shown, const std::string& approved);

/// The same against the approved texts of this name, which MORVEX_APPROVE replaces like a picture.
std::string differenceFromApproved(const std::string& texts, const QString& name);

} // namespace morvex
