import QtQuick

/// Keeps the keyboard focus in its place. A sheet that closes returns it to the control that had it. If that
/// control is gone, its card gets the focus: Tab continues there, and no key reaches a removed button or one
/// that the user has not seen.
Item {
    id: keeper

    required property Item area
    /// The last item with the focus, whether its focus ring was visible, and the card around it.
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
        // The focused row of a list is gone, and the list itself does not use the focus.
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
            // When a sheet closes, the window itself has the focus for a moment.
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
