pragma Singleton
import Morvex
import QtQuick

/// Defines the whole look: colours, sizes, distances. Coloured parts use shades of the product's blue and
/// orange; on a dark ground they are lighter, so that text in them stays readable.
QtObject {
    readonly property bool dark: Appearance.dark

    readonly property color blue: Appearance.blue
    readonly property color orange: Appearance.orange

    readonly property color accent: dark ? shade(blue, 0.62, 0.94) : blue
    readonly property color attention: dark ? shade(orange, 0.64, 1) : shade(orange, 0.97, 0.74)
    readonly property color accentTint: dark ? shade(blue, 0.7, 0.3) : shade(blue, 0.08, 0.98)
    readonly property color attentionTint: dark ? shade(orange, 0.62, 0.24) : shade(orange, 0.09, 0.99)
    readonly property color button: dark ? shade(blue, 0.86, 0.72) : blue
    readonly property color buttonHover: dark ? shade(blue, 0.83, 0.8) : shade(blue, 0.95, 0.72)
    readonly property color buttonDown: dark ? shade(blue, 0.87, 0.62) : shade(blue, 1, 0.53)
    readonly property color buttonText: "#ffffff"

    readonly property color page: dark ? "#13161b" : "#f3f5f8"
    readonly property color card: dark ? "#1c2027" : "#ffffff"
    readonly property color line: dark ? "#2d333d" : "#e2e7ee"
    readonly property color field: dark ? "#14181e" : "#f8fafc"
    readonly property color fieldLine: dark ? "#4a5361" : "#b9c3d0"
    readonly property color hover: dark ? "#272d36" : "#eef2f7"
    readonly property color pressed: dark ? "#303742" : "#e3e9f1"
    readonly property color text: dark ? "#eef1f5" : "#161d27"
    readonly property color secondaryText: dark ? "#a5afbd" : "#566273"
    readonly property color switchOff: dark ? "#566070" : "#8a95a5"

    readonly property int bodySize: Appearance.textSize
    readonly property int captionSize: Math.round(bodySize * 0.9)
    readonly property int headingSize: Math.round(bodySize * 1.15)
    readonly property int numberSize: Math.round(bodySize * 2.6)
    readonly property real lineHeight: 1.25

    readonly property int hairGap: 4
    readonly property int smallGap: 8
    readonly property int gap: 12
    readonly property int cardPadding: 20
    readonly property int pageMargin: 24
    readonly property int columnWidth: 640
    readonly property int scrollStep: 48
    /// A longer list scrolls; about six texts fit.
    readonly property int listHeight: 30 * bodySize

    readonly property int cardRadius: 14
    readonly property int controlRadius: 8
    readonly property int controlHeight: Math.max(36, Math.round(bodySize * 2.5))
    readonly property int quick: 120

    function shade(color: color, saturation: real, value: real): color {
        return Qt.hsva(color.hsvHue, saturation, value, 1);
    }

    /// The colour in the form that `GlyphProvider` expects.
    function hex(color: color): string {
        return color.toString().slice(-6);
    }
}
