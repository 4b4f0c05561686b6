import QtQuick

/// Copies, and confirms that for a moment.
ActionButton {
    id: button

    /// Text that a screen reader adds if the card alone does not make clear what is copied.
    property string what
    signal copy

    /// Called when the button is to copy something else.
    function reset() {
        done.stop();
    }

    text: done.running ? qsTr("Zkopírováno") : qsTr("Kopírovat")
    Accessible.name: what === "" ? text : `${text}: ${what}`
    onClicked: {
        copy();
        done.restart();
    }

    Timer {
        id: done

        interval: 2000
    }
}
