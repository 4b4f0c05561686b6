import QtQuick
import QtQuick.Templates as T

/// A button. The main one of a card is filled, a warning one has the colour of attention.
T.Button {
    id: button

    enum Kind { Plain, Main, Warning }
    property int kind: ActionButton.Kind.Plain
    /// What a screen reader adds: what came of the last press, where that is shown elsewhere.
    property string outcome
    /// What it is about, where that changes under the same text. A press counts only for what has been there for a moment.
    property string subject
    /// That of the press that goes on: what the person saw. By its end the button may be about something else.
    property string meant
    readonly property bool main: kind === ActionButton.Kind.Main
    readonly property color ink: main ? Vzhled.buttonText : kind === ActionButton.Kind.Warning ? Vzhled.attention : Vzhled.text

    implicitWidth: Math.max(88, label.implicitWidth + leftPadding + rightPadding)
    implicitHeight: Vzhled.controlHeight
    leftPadding: 16
    rightPadding: 16
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.description: outcome
    // The toolkit does not tell a screen reader that a control is disabled.
    Accessible.ignored: !enabled
    /// As a press does.
    function press() {
        meant = subject;
        clicked();
    }

    onPressed: meant = subject
    Accessible.onPressAction: press()
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()

    contentItem: Text {
        id: label

        text: button.text
        color: button.ink
        font.pixelSize: Vzhled.bodySize
        font.weight: Font.Medium
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }

    background: Rectangle {
        radius: Vzhled.controlRadius
        color: button.main ? (button.down ? Vzhled.buttonDown : button.hovered ? Vzhled.buttonHover : Vzhled.button) : (button.down ? Vzhled.pressed : button.hovered ? Vzhled.hover : Vzhled.card)
        border.color: button.main ? "transparent" : Vzhled.fieldLine
        border.width: button.main ? 0 : 1
    }

    FocusRing {
        control: button
    }
}
