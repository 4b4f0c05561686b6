#pragma once

#include <QImage>
#include <QString>

#include <string>

namespace morvex {

/// Compares with the approved picture of this name, so tolerantly that another build of the font passes and a
/// missing line does not. What is wrong in words; empty when nothing is. With MORVEX_APPROVE in the
/// environment the picture becomes the approved one.
std::string differenceFromApproved(const QImage& picture, const QString& name);

} // namespace morvex
