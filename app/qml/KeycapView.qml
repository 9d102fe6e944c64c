import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A key of the pad that can be selected. It goes down with the real one.
AbstractButton {
    id: key

    required property int keyId
    required property string legend
    required property string glyph
    required property string caption
    required property bool isBound
    required property bool isSelected
    required property bool isDown // on the real pad

    height: parent ? parent.height : 0
    width: height
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: keyId + " " + caption
    Accessible.description: legend
    Accessible.onPressAction: clicked()
    onClicked: App.mapping.select(keyId)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    HintTip {
        text: key.caption
        visible: key.isBound && (key.hovered || key.visualFocus)
    }
    background: Item {
        FocusRing {
            cornerRadius: key.width * 0.13
            visible: key.visualFocus
        }
    }
    contentItem: Keycap {
        number: key.keyId
        legend: key.legend || key.caption
        glyph: key.glyph
        isQuiet: !key.isBound
        isHovered: key.hovered
        isSunk: key.down || key.isDown
        isLit: key.isDown
        isSelected: key.isSelected
    }
}
