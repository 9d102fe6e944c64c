import QtQuick
import Trellivar

// The blurred shadow of a rounded object, as layers that grow and add up.
Item {
    property real cornerRadius: Theme.radius

    Repeater {
        model: 20

        ShadowLayer {
            cornerRadius: (parent as SoftShadow)?.cornerRadius ?? 0
        }
    }
}
