import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A button: primary for the one thing to do, quiet for others, plain without a ground.
Button {
    id: button

    property bool isPrimary: false
    property bool isPlain: false

    // Holding the key down is no second press, of whatever comes in this place. Some systems repeat its
    // release as well.
    function press(event: KeyEvent) {
        if (!event.isAutoRepeat)
            clicked();
    }

    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: Theme.unit * 2
    rightPadding: Theme.unit * 2
    font.pixelSize: Theme.body
    font.weight: isPrimary ? Font.DemiBold : Font.Normal
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Accessible.onPressAction: if (enabled)
        clicked()
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)
    Keys.onSpacePressed: event => event.accepted = event.isAutoRepeat
    Keys.onReleased: event => event.accepted = event.isAutoRepeat

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.isPrimary ? Theme.textOnAccent : button.isPlain ? Theme.accent : Theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: Theme.radius
        color: {
            if (button.isPrimary)
                return button.down ? Qt.darker(Theme.accent, 1.12) : button.hovered ? Qt.lighter(Theme.accent, 1.08) : Theme.accent;
            if (button.down || button.hovered)
                return Theme.hovered;
            return button.isPlain ? "transparent" : Theme.raised;
        }
        border.width: button.isPrimary || button.isPlain || Theme.isDark ? 0 : 1
        border.color: Theme.line

        FocusRing {
            visible: button.visualFocus
        }
    }
}
