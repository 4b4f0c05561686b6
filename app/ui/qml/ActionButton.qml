import QtQuick
import QtQuick.Templates as T

/// A button. The main button of a card is filled; a warning button has the colour of attention.
T.Button {
    id: button

    enum Kind { Plain, Main, Warning }
    property int kind: ActionButton.Kind.Plain
    /// Text that a screen reader adds: the result of the last press, if that is shown elsewhere.
    property string outcome
    /// What the button acts on, if that can change while the text stays the same. A press counts only if the
    /// subject has been the same for a moment.
    property string subject
    /// The subject when the press began, which is what the user saw. It may change before the press ends.
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
    /// Does the same as a press.
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
