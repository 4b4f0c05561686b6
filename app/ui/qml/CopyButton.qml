import QtQuick

/// Copies, and says for a moment that it did.
ActionButton {
    id: button

    /// What a screen reader adds to the text, where the card alone does not tell what is copied.
    property string what
    signal copy

    /// For something else to copy.
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
