import QtQuick
import QtQuick.Window
import QtTest
import Tessaly.Store
import Tessaly.Ui

/// Finds what it touches by the names that a screen reader tells.
TestCase {
    id: test

    when: windowShown

    Binding {
        target: Language
        property: "isEnglish"
        value: PlannerStore.isEnglish
    }

    /// The visible item whose accessible name is or begins with `name`; null when there is none.
    function named(name: string): Item {
        const content = test.Window.contentItem;
        const exact = matching(content, item => item.Accessible.name === name);
        return exact ?? matching(content, item => item.Accessible.name.startsWith(name));
    }

    function matching(item: Item, isMeant): Item {
        if (!item.visible)
            return null;
        if (item.Accessible.name !== "" && !item.Accessible.ignored && isMeant(item))
            return item;
        for (let i = item.children.length - 1; i >= 0; --i) {
            const found = matching(item.children[i], isMeant);
            if (found !== null)
                return found;
        }
        return null;
    }

    function shown(name: string): Item {
        let found = null;
        tryVerify(() => (found = named(name)) !== null, 3000, "no item is named " + name);
        return found;
    }

    function press(name: string) {
        mouseClick(shown(name));
    }

    function typeInto(name: string, text: string) {
        mouseClick(shown(name));
        for (const character of text)
            keyClick(character);
    }
}
