// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15

// A bar over the 3D view, bound to two objects of the program: `eye`, its camera, and `exhibit`, what is shown. What a
// script or a hand changes is seen here, and what is changed here is seen there. Save this file while it runs.
Item {
    id: root

    readonly property real unit: Math.max(1, height / 720)
    readonly property var place: String(eye.Position).split(" ")
    readonly property real degrees: 180 / Math.PI

    component Label: Text {
        font.pixelSize: 15 * root.unit
        font.family: "sans-serif"
        color: "#8fa5bc"
    }

    component Slider: Item {
        id: slider

        property string name
        property string text
        property real from: 0
        property real to: 1
        property real value
        signal moved(real value)

        implicitWidth: 210 * root.unit
        implicitHeight: 52 * root.unit

        Label { text: slider.name }
        Label { anchors.right: parent.right; color: "#5cc8ff"; font.bold: true; text: slider.text }
        Rectangle {
            id: groove
            y: 36 * root.unit
            width: parent.width
            height: 6 * root.unit
            radius: height / 2
            color: "#0d141d"

            readonly property real share: Math.min(1, Math.max(0, (slider.value - slider.from) / (slider.to - slider.from)))

            Rectangle {
                width: groove.share * groove.width
                height: parent.height
                radius: height / 2
                color: "#2f8fd0"
            }
            Rectangle {
                x: groove.share * groove.width - width / 2
                anchors.verticalCenter: parent.verticalCenter
                width: 20 * root.unit
                height: width
                radius: width / 2
                color: area.pressed ? "#5cc8ff" : "#f4f8fc"
                border { color: "#2f8fd0"; width: 2 * root.unit }
            }
        }
        MouseArea {
            id: area
            anchors { fill: groove; margins: -14 * root.unit }
            preventStealing: true
            function move(share) {
                slider.moved(slider.from + Math.min(1, Math.max(0, share)) * (slider.to - slider.from))
            }
            onPressed: move((mouse.x - 14 * root.unit) / groove.width)
            onPositionChanged: move((mouse.x - 14 * root.unit) / groove.width)
            onWheel: move(groove.share + wheel.angleDelta.y / 2400)
        }
    }

    Rectangle {
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 24 * root.unit }
        width: row.width + 64 * root.unit
        height: 108 * root.unit
        radius: 26 * root.unit
        color: "#e6151d29"
        border { color: "#3a4c63"; width: 2 * root.unit }

        // What nothing in the QML takes goes on to the camera.
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            onWheel: wheel.accepted = true
        }
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 34 * root.unit

            Column {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2 * root.unit
                Label { text: "Camera" }
                Repeater {
                    model: 3
                    Text {
                        width: 92 * root.unit
                        font { pixelSize: 13 * root.unit; family: "monospace" }
                        color: "#dbe4ee"
                        text: "xyz"[index] + " " + Number(root.place[index]).toFixed(2).padStart(7)
                    }
                }
            }
            Slider {
                anchors.verticalCenter: parent.verticalCenter
                name: "Aperture"
                text: (eye.VerticalAperture * root.degrees).toFixed(0) + "\u00b0"
                from: 0.2
                to: 1.6
                value: eye.VerticalAperture
                onMoved: eye.VerticalAperture = value
            }
            Slider {
                anchors.verticalCenter: parent.verticalCenter
                name: "Roughness"
                text: exhibit.Roughness.toFixed(2)
                from: 0.05
                value: exhibit.Roughness
                onMoved: exhibit.Roughness = value
            }
            Slider {
                anchors.verticalCenter: parent.verticalCenter
                name: "Metalness"
                text: exhibit.Metalness.toFixed(2)
                value: exhibit.Metalness
                onMoved: exhibit.Metalness = value
            }
            Grid {
                anchors.verticalCenter: parent.verticalCenter
                columns: 3
                spacing: 9 * root.unit
                Repeater {
                    model: ["#e0a458", "#c8553d", "#6fa287", "#4f8fd8", "#b38bd6", "#d9dee5"]
                    Rectangle {
                        width: 30 * root.unit
                        height: width
                        radius: 9 * root.unit
                        color: modelData
                        border {
                            width: Qt.colorEqual(color, exhibit.Color) ? 3 * root.unit : 0
                            color: "#ffffff"
                        }
                        MouseArea {
                            anchors.fill: parent
                            onClicked: exhibit.Color = modelData
                        }
                    }
                }
            }
        }
    }
}
