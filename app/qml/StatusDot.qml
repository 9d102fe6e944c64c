import QtQuick
import Trellivar

// A small light.
Rectangle {
    implicitWidth: Theme.unit
    implicitHeight: Theme.unit
    radius: width / 2
}
