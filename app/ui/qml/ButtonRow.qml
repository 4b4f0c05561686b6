import QtQuick

/// Buttons side by side, wrapped to further lines if the card is narrow.
Flow {
    spacing: Vzhled.smallGap
}
