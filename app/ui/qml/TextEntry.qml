import QtQuick
import QtQuick.Layouts

/// A labelled line of text. What was typed is told by `edited` once it is complete.
ColumnLayout {
    id: entry

    property string label
    /// What stands here until something else is typed.
    property string value
    /// What is wrong with it, told to a screen reader while it has the keyboard; it is shown elsewhere.
    property string problem
    property alias hint: field.placeholderText
    property alias echoMode: field.echoMode
    property alias text: field.typed
    signal edited(string text)
    /// Enter was pressed.
    signal accepted

    /// Takes the keyboard.
    function take() {
        field.forceActiveFocus();
    }

    /// Tells what was typed, if it was not told yet.
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

        /// What a screen reader is told. The toolkit would tell it a password too.
        property string text: entry.told()

        onTextChanged: {
            // Written by a screen reader.
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
