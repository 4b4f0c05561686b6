import QtQuick

/// Buttons side by side, on further lines where the card is narrow.
Flow {
    spacing: Vzhled.smallGap
}
