import QtQuick 2.15

// One document's quick help: title, description, and a table of bindings for each section that has any.
// "sheet" is the QuickHelpSheet of the panel.
Rectangle {
    id: root

    readonly property int margin: 16
    readonly property int keyColumn: 104

    SystemPalette { id: colours }
    FontMetrics { id: metrics }

    color: colours.base
    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    // How many bindings are laid out, for whoever wants to be sure.
    function countRows() {
        var rows = 0
        for (var i = 0; i < sections.count; ++i)
            rows += sections.itemAt(i).rows
        return rows
    }

    function mixed(a, b, part) {
        return Qt.rgba(a.r + (b.r - a.r) * part, a.g + (b.g - a.g) * part, a.b + (b.b - a.b) * part, 1)
    }

    Flickable {
        id: page
        anchors.fill: parent
        contentWidth: width
        contentHeight: content.height + 2 * root.margin
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: content
            x: root.margin
            y: root.margin
            width: page.width - 2 * root.margin
            spacing: 6

            Text {
                width: parent.width
                text: sheet.title
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft // names of files too, which goes to the right when mirrored
                visible: text !== ""
                color: colours.text
                wrapMode: Text.Wrap
                font.pixelSize: Math.round(metrics.height * 1.25)
                font.weight: Font.DemiBold
            }

            Text {
                width: parent.width
                text: sheet.description
                textFormat: Text.PlainText
                visible: text !== ""
                color: root.mixed(colours.text, colours.base, 0.25)
                wrapMode: Text.Wrap
                lineHeight: 1.15
            }

            Repeater {
                id: sections
                model: sheet.sections

                delegate: Column {
                    id: section

                    readonly property alias rows: inputs.count

                    width: content.width
                    topPadding: 12
                    spacing: 7
                    visible: inputs.count > 0

                    Text {
                        width: parent.width
                        text: modelData.name
                        textFormat: Text.PlainText
                        color: root.mixed(colours.highlight, colours.text, 0.3)
                        elide: Text.ElideRight
                        font.weight: Font.DemiBold
                    }

                    Rectangle {
                        width: parent.width
                        height: 1
                        color: root.mixed(colours.base, colours.text, 0.15)
                    }

                    Repeater {
                        id: inputs
                        model: modelData.inputs

                        delegate: Item {
                            width: section.width
                            height: Math.max(key.height, meaning.height)

                            Rectangle {
                                id: key
                                anchors.left: parent.left
                                width: Math.min(binding.implicitWidth + 14, root.keyColumn)
                                height: binding.implicitHeight + 5
                                radius: 4
                                color: root.mixed(colours.base, colours.text, 0.05)
                                border.color: root.mixed(colours.base, colours.text, 0.28)

                                Text {
                                    id: binding
                                    anchors.centerIn: parent
                                    text: model.command
                                    textFormat: Text.RichText
                                    color: colours.text
                                }
                            }

                            Text {
                                id: meaning
                                anchors.left: parent.left
                                anchors.leftMargin: root.keyColumn + 12
                                y: Math.max(0, (key.height - metrics.height) / 2)
                                width: parent.width - anchors.leftMargin
                                text: model.description
                                textFormat: Text.PlainText
                                color: colours.text
                                wrapMode: Text.Wrap
                            }
                        }
                    }
                }
            }
        }
    }

    // Shows how far the sheet is scrolled.
    Rectangle {
        visible: page.visibleArea.heightRatio < 1
        anchors.right: parent.right
        anchors.rightMargin: 3
        y: page.visibleArea.yPosition * page.height
        width: 5
        height: Math.max(24, page.visibleArea.heightRatio * page.height)
        radius: width / 2
        color: root.mixed(colours.base, colours.text, 0.35)
    }
}
