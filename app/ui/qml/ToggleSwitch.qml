import QtQuick
import QtQuick.Templates as T

/// A switch. It shows `value` and asks for a change by `wanted`. It is not Qt's own switch, because each
/// instance of that leaks a kilobyte while a screen reader is active.
T.AbstractButton {
    id: control

    property bool value: false
    signal wanted(bool on)

    /// Does the same as a press.
    function flip() {
        toggle();
        toggled();
    }

    implicitWidth: 44
    implicitHeight: 28
    checkable: true
    Accessible.role: Accessible.CheckBox
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    checked: value
    onToggled: {
        const on = checked;
        checked = Qt.binding(() => control.value);
        wanted(on);
    }
    // The toolkit does not tell a screen reader that a control is disabled.
    Accessible.ignored: !enabled
    Accessible.onPressAction: flip()
    Accessible.onToggleAction: flip()
    Keys.onReturnPressed: flip()
    Keys.onEnterPressed: flip()

    indicator: Rectangle {
        anchors.centerIn: parent
        width: 42
        height: 24
        radius: 12
        color: control.checked ? (control.hovered ? Vzhled.buttonHover : Vzhled.button) : Vzhled.switchOff

        Rectangle {
            x: control.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            radius: 9
            color: "#ffffff"

            Behavior on x {
                NumberAnimation {
                    duration: Vzhled.quick
                }
            }
        }
    }

    FocusRing {
        control: control
        radius: 17
    }
}
