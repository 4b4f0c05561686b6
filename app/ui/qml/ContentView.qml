import Morvex
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// The scrolling column of cards.
Flickable {
    id: view

    required property CompanionModel companion

    contentWidth: width
    contentHeight: column.implicitHeight + 2 * Vzhled.pageMargin
    boundsBehavior: Flickable.StopAtBounds
    clip: true

    /// Scrolls as little as shows the whole item, or its top where it is too high.
    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y - Vzhled.pageMargin;
        const bottom = top + item.height + 2 * Vzhled.pageMargin;
        if (top < contentY || bottom - top > height)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.min(contentHeight - height, bottom - height);
    }

    Connections {
        target: view.Window.window
        function onActiveFocusItemChanged() {
            const item = view.Window.window?.activeFocusItem;
            for (let parent = item; parent; parent = parent.parent)
                if (parent === column)
                    view.reveal(item);
        }
    }

    Connections {
        target: view.companion.approval
        function onChanged() {
            if (view.companion.approval.waiting)
                Qt.callLater(() => view.reveal(approval));
        }
    }

    T.ScrollBar.vertical: ScrollHandle {}

    ColumnLayout {
        id: column

        x: Math.max(Vzhled.pageMargin, (view.width - width) / 2)
        y: Vzhled.pageMargin
        width: Math.min(Vzhled.columnWidth, view.width - 2 * Vzhled.pageMargin)
        spacing: Vzhled.gap + Vzhled.hairGap

        ParovaniView {
            Layout.fillWidth: true
            model: view.companion.pairing
        }

        LinkCard {
            Layout.fillWidth: true
            model: view.companion.link
        }

        VoiceCard {
            Layout.fillWidth: true
        }

        ApprovalCard {
            id: approval

            Layout.fillWidth: true
            model: view.companion.approval
        }

        MacIntegrationsView {
            Layout.fillWidth: true
            model: view.companion.integrations
        }

        FoldersCard {
            Layout.fillWidth: true
            model: view.companion.folders
        }

        WakefulnessCard {
            Layout.fillWidth: true
            model: view.companion.wakefulness
        }

        AboutCard {
            Layout.fillWidth: true
            model: view.companion.about
        }
    }
}
