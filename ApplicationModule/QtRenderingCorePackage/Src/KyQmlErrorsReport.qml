// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
import QtQuick 2.15

// Stands for a QML that failed: reads the context properties qmlPathErrors and qmlError. Tab goes from the buttons to the
// errors, where the arrows choose; Return and Space press.
Rectangle {
    id: report

    signal openError(var error)
    signal reloadFile()

    readonly property real smallest: Math.max(7, Math.min(11, width / 22, height / 9))
    readonly property real unit: Math.max(smallest, Math.min(width / 42, height / 22, Math.max(20, height / 60)))
    // A small area is for the errors alone, a narrow one has their places in the text.
    readonly property bool isSmall: width < 21 * unit || height < 8 * unit
    readonly property bool isNarrow: width < 30 * unit
    readonly property real gap: Math.round(isSmall ? unit / 3 : unit)
    readonly property var last: qmlError && qmlError.length > 0 ? qmlError[qmlError.length - 1] : null
    readonly property int count: last ? qmlError.length + (last.more ? last.more - 1 : 0) : 0
    readonly property string summary: count === 1 ? qsTranslate("KyQmlErrorsReport", "Cannot be shown: 1 error")
                                                  : qsTranslate("KyQmlErrorsReport", "Cannot be shown: %1 errors").arg(count)

    // What is said of QML itself is English; these two are the pass's own.
    function describe(error) {
        return error.more ? qsTranslate("KyQmlErrorsReport", "... and %1 more errors.").arg(error.more)
                          : qsTranslate("KyQmlErrorsReport", error.description)
    }
    function describePlace(error) {
        if (error.line <= 0)
            return ""
        return error.column > 0 ? qsTranslate("KyQmlErrorsReport", "line %1, column %2").arg(error.line).arg(error.column)
                                : qsTranslate("KyQmlErrorsReport", "line %1").arg(error.line)
    }

    color: "#f01b202a"
    Accessible.role: Accessible.Pane
    Accessible.name: qmlPathErrors
    Accessible.description: summary

    component Label: Text {
        color: "#e8ecf2"
        font.pixelSize: report.unit
        textFormat: Text.PlainText
    }

    component Button: Rectangle {
        id: button

        property string text
        property bool isMain: false

        signal clicked()

        width: caption.implicitWidth + 2 * report.gap
        height: Math.round(2.2 * report.unit)
        radius: Math.round(report.unit / 3)
        color: isMain ? (area.containsMouse ? "#ff6f61" : "#e5533f") : (area.containsMouse ? "#3d4658" : "#2f3746")
        border.color: activeFocus ? "#ffffff" : isMain ? "transparent" : "#4a5468"
        border.width: activeFocus ? Math.max(2, Math.round(report.unit / 8)) : 1
        scale: area.pressed ? 0.96 : 1
        activeFocusOnTab: true
        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.focusable: true
        Accessible.onPressAction: clicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        Keys.onSpacePressed: clicked()

        Label {
            id: caption
            anchors.centerIn: parent
            text: button.text
            font.bold: button.isMain
        }
        MouseArea {
            id: area
            anchors.fill: parent
            hoverEnabled: true
            onClicked: button.clicked()
        }
    }

    Rectangle {
        id: stripe
        width: parent.width
        height: Math.max(3, Math.round(report.unit / 3))
        color: "#e5533f"
    }

    Item {
        id: header
        anchors { top: stripe.bottom; left: parent.left; right: parent.right; margins: visible ? report.gap : 0 }
        visible: !report.isSmall
        height: visible ? Math.max(titles.height, buttons.height) : 0

        Column {
            id: titles
            anchors { left: parent.left; right: buttons.left; rightMargin: report.gap; verticalCenter: parent.verticalCenter }
            spacing: Math.round(report.unit / 4)

            Label {
                width: parent.width
                text: qmlPathErrors
                font { pixelSize: Math.round(1.5 * report.unit); bold: true }
                elide: Text.ElideMiddle
            }
            Label {
                width: parent.width
                text: report.summary
                color: "#9aa5b8"
                elide: Text.ElideRight
            }
        }
        Row {
            id: buttons
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            spacing: Math.round(report.gap / 2)

            Button {
                objectName: "open"
                visible: qmlError[0].canOpen
                text: qsTranslate("KyQmlErrorsReport", "Open")
                onClicked: report.openError(qmlError[0])
            }
            Button {
                objectName: "reload"
                text: qsTranslate("KyQmlErrorsReport", "Reload")
                isMain: true
                focus: true
                onClicked: report.reloadFile()
            }
        }
    }

    ListView {
        id: errors
        objectName: "errors"
        anchors { top: header.bottom; left: parent.left; right: parent.right; bottom: parent.bottom; margins: report.gap }
        spacing: Math.round(report.gap / 2)
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: qmlError
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: report.summary
        Keys.onReturnPressed: openCurrent()
        Keys.onEnterPressed: openCurrent()
        Keys.onSpacePressed: openCurrent()

        function openCurrent() {
            if (currentIndex >= 0 && qmlError[currentIndex].canOpen)
                report.openError(qmlError[currentIndex])
        }

        delegate: Rectangle {
            id: row

            readonly property bool hasPlace: modelData.line > 0
            readonly property string shortPlace: modelData.line + (modelData.column > 0 ? ":" + modelData.column : "") + " "

            width: ListView.view.width
            height: words.height + 2 * Math.round(report.gap * 0.7)
            radius: Math.round(report.unit / 3)
            border.color: "#ffffff"
            border.width: ListView.isCurrentItem && errors.activeFocus ? Math.max(2, Math.round(report.unit / 8)) : 0
            Accessible.role: Accessible.ListItem
            Accessible.name: (hasPlace ? report.describePlace(modelData) + ": " : "") + report.describe(modelData)
            Accessible.description: modelData.file
            color: modelData.canOpen && rowArea.containsMouse ? "#323b4c" : "#272e3b"

            Rectangle {
                id: place
                visible: row.hasPlace && !report.isNarrow
                anchors { left: parent.left; leftMargin: Math.round(report.gap * 0.7); verticalCenter: parent.verticalCenter }
                width: visible ? placeText.implicitWidth + report.gap : 0
                height: placeText.implicitHeight + Math.round(report.unit / 2)
                radius: height / 2
                color: "#4a2b2f"

                Label {
                    id: placeText
                    anchors.centerIn: parent
                    text: report.describePlace(modelData)
                    font.pixelSize: Math.round(0.85 * report.unit)
                    color: "#ff9d8f"
                }
            }
            Column {
                id: words
                anchors { left: place.right; right: parent.right; margins: Math.round(report.gap * 0.7); verticalCenter: parent.verticalCenter }
                spacing: Math.round(report.unit / 5)

                Label {
                    width: parent.width
                    text: (row.hasPlace && report.isNarrow ? row.shortPlace : "") + report.describe(modelData)
                    wrapMode: Text.Wrap
                }
                Label {
                    width: parent.width
                    visible: text.length > 0
                    text: modelData.file
                    font.pixelSize: Math.round(0.85 * report.unit)
                    color: "#9aa5b8"
                    elide: Text.ElideLeft
                }
            }
            MouseArea {
                id: rowArea
                anchors.fill: parent
                hoverEnabled: true
                enabled: modelData.canOpen
                onClicked: report.openError(modelData)
            }
        }
    }
}
