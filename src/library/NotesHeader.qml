// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The heading of a group of notes: a day or a place, and the number of notes.
Item {
    id: header

    required property string title
    required property string detail
    required property int count

    Accessible.role: Accessible.Heading
    Accessible.name: header.title

    Row {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Units.space8
        width: parent.width
        spacing: Units.space8

        TextLine {
            id: name

            width: Math.min(implicitWidth, header.width - number.width - Units.space8)
            text: header.title
            color: Theme.ink
            size: Units.type15
            weight: Font.DemiBold
        }
        TextLine {
            id: path

            y: name.height - height - 1
            width: Math.max(0, Math.min(implicitWidth,
                                        header.width - name.width - number.width
                                        - 2 * Units.space8))
            visible: header.detail.length > 1 && width > Units.space48
            text: header.detail
            color: Theme.secondInk
            size: Units.type12
        }
        TextLine {
            id: number

            y: name.height - height - 1
            width: implicitWidth
            text: header.count
            color: Theme.secondInk
            size: Units.type12
        }
    }
}
