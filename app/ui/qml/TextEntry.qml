import QtQuick
import QtQuick.Layouts

/// A labelled line of text. `edited` is emitted with the typed text once it is complete.
ColumnLayout {
    id: entry

    property string label
    /// The text that is shown until another is typed.
    property string value
    /// What is wrong with the text. A screen reader reads it while the field has the focus; it is shown
    /// elsewhere.
    property string problem
    property alias hint: field.placeholderText
    property alias echoMode: field.echoMode
    property alias text: field.typed
    signal edited(string text)
    /// Enter was pressed.
    signal accepted

    /// Takes the focus.
    function take() {
        field.forceActiveFocus();
    }

    /// Emits the typed text if it was not emitted yet.
    function commit() {
        if (field.typed !== value)
            edited(field.typed);
    }

    function told(): string {
        return field.echoMode === TextInput.Normal ? field.typed : "";
    }

    onValueChanged: field.typed = value
    Component.onDestruction: commit()
    Layout.fillWidth: true
    spacing: Vzhled.hairGap

    CaptionText {
        text: entry.label
        Accessible.ignored: true
    }

    EntryInput {
        id: field

        /// The text for screen readers. Qt would give them a password too.
        property string text: entry.told()

        onTextChanged: {
            // A screen reader has written the text.
            if (text === entry.told())
                return;
            typed = text;
            text = Qt.binding(entry.told);
        }
        Layout.fillWidth: true
        Accessible.name: entry.label
        Accessible.description: activeFocus && entry.problem !== "" ? entry.problem : placeholderText
        onEditingFinished: entry.commit()
        onAccepted: entry.accepted()
    }
}
