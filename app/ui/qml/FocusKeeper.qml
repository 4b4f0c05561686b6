import QtQuick

/// Keeps the keyboard in its place. A sheet that closes gives it back to the control that had it. When that control has
/// gone, its card takes it: Tab goes on there, and no key reaches a button that is gone or one that nobody has seen.
Item {
    id: keeper

    required property Item area
    /// What had the keyboard last, whether its ring was to be seen, and the card around it.
    property Item last: null
    property bool ring: false
    property Item home: null

    function homeOf(item: Item): Item {
        let card = null;
        for (; item; item = item.parent) {
            if (item === area)
                return card ?? area;
            if (item instanceof Karta)
                card = item;
        }
        return null;
    }

    function note(item: Item) {
        const place = homeOf(item);
        if (!place)
            return;
        last = item;
        home = place;
    }

    function settle() {
        // The row of a list that had it has gone; the list itself has no use for it.
        if (Window.activeFocusItem instanceof ListView)
            homeOf(Window.activeFocusItem)?.forceActiveFocus();
        else if (Window.activeFocusItem !== Window.contentItem)
            ring = Window.activeFocusItem === last ? (last?.visualFocus ?? false) : ring;
        else if (last?.visible && last.enabled)
            last.forceActiveFocus(ring ? Qt.TabFocusReason : Qt.OtherFocusReason);
        else
            home?.forceActiveFocus();
    }

    Connections {
        target: keeper.Window.window
        function onActiveFocusItemChanged() {
            keeper.note(keeper.Window.activeFocusItem);
            // Between a sheet and what was before it the window itself has the keyboard.
            Qt.callLater(keeper.settle);
        }
    }

    Connections {
        target: keeper.Window.activeFocusItem
        function onVisibleChanged() {
            const item = keeper.Window.activeFocusItem;
            if (item && !item.visible)
                keeper.homeOf(item)?.forceActiveFocus();
        }
    }
}
