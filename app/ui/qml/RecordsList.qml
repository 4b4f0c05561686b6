import Morvex
import QtQuick
import QtQuick.Templates as T

/// One row for each record. Only visible rows are created, however many there are. The list grows up to a
/// certain height and scrolls beyond it. At its end a wheel or an arrow key scrolls the surrounding area.
Item {
    id: list

    required property RecordsModel records
    readonly property bool scrolls: rows.contentHeight > Vzhled.listHeight
    signal opened(string id)

    /// Scrolls just enough to show the row and its neighbours, because Tab can only reach rows that have been
    /// created. A row pressed with the mouse is not moved.
    function reveal(row: RecordRow) {
        if (!row || row.focusReason === Qt.MouseFocusReason)
            return;
        const around = row.height + rows.spacing;
        const top = rows.originY - rows.topMargin;
        const bottom = rows.originY + rows.contentHeight + rows.bottomMargin - rows.height;
        if (row.y - around < rows.contentY)
            rows.contentY = Math.max(top, row.y - around);
        else if (row.y + row.height + around > rows.contentY + rows.height)
            rows.contentY = Math.min(bottom, row.y + row.height + around - rows.height);
    }

    function goTo(index: int) {
        rows.positionViewAtIndex(index, ListView.Contain);
        rows.itemAtIndex(index).forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Math.min(rows.contentHeight, Vzhled.listHeight)

    ListView {
        id: rows

        // The width of the focus ring, which is drawn outside of the row.
        readonly property int ring: 3

        /// Lays out and orders the current rows. Screen readers look for them even while no frame is drawn.
        function settle() {
            forceLayout();
            RowOrder.arrange(contentItem);
        }

        anchors.fill: parent
        anchors.margins: -ring
        topMargin: ring
        bottomMargin: ring
        spacing: Vzhled.gap
        model: list.records.rows
        currentIndex: -1
        keyNavigationEnabled: false
        reuseItems: true
        // A row that others push out of sight is kept, together with the focus.
        cacheBuffer: Vzhled.listHeight
        interactive: list.scrolls
        clip: list.scrolls
        boundsBehavior: Flickable.StopAtBounds
        onHeightChanged: Qt.callLater(settle)
        Keys.enabled: list.scrolls
        Keys.onPressed: event => {
            const row = Window.activeFocusItem as RecordRow;
            if (!row)
                return;
            const page = Math.max(1, Math.floor(height / (row.height + spacing)) - 1);
            const goals = {
                [Qt.Key_Up]: row.index - 1,
                [Qt.Key_Down]: row.index + 1,
                [Qt.Key_PageUp]: row.index - page,
                [Qt.Key_PageDown]: row.index + page,
                [Qt.Key_Home]: 0,
                [Qt.Key_End]: count - 1
            };
            const goal = Math.max(0, Math.min(count - 1, goals[event.key] ?? row.index));
            event.accepted = goal !== row.index;
            if (event.accepted)
                list.goTo(goal);
        }

        T.ScrollBar.vertical: ScrollHandle {
            id: handle
        }

        delegate: RecordRow {
            id: row

            x: rows.ring
            width: list.width - (list.scrolls ? handle.width : 0)
            onClicked: list.opened(modelData.id)
            onYChanged: Qt.callLater(rows.settle)
            Component.onCompleted: Qt.callLater(rows.settle)
            // A row that waits for reuse must be invisible to screen readers and take no focus.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
        }
    }

    Connections {
        target: list.records
        function onChanged() {
            Qt.callLater(rows.settle);
        }
    }
}
