// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// The translation, if there is one, over the explanation.
Item {
    id: answer

    required property ResultPanelModel view

    /// A short translation is a headline; a paragraph is set as text.
    readonly property bool isHeadline: answer.view.translation.length <= 120
    readonly property bool hasTranslation: answer.view.translation.length > 0
    readonly property bool hasExplanation: answer.view.explanation.length > 0

    height: answer.hasExplanation ? explanation.y + explanation.height : translation.height

    function deselect(): void {
        translation.deselect()
        explanation.deselect()
    }

    ReadingText {
        id: translation

        objectName: "translation"
        width: parent.width
        height: answer.hasTranslation ? implicitHeight : 0
        visible: answer.hasTranslation
        text: answer.view.translation
        color: Theme.islandText
        font.pixelSize: answer.isHeadline ? Units.type17 : Units.type15
        font.weight: Font.DemiBold
        lineFactor: answer.isHeadline ? Units.titleLine : Units.readingLine
    }
    ReadingText {
        id: explanation

        objectName: "explanation"
        anchors.top: translation.bottom
        anchors.topMargin: answer.hasTranslation ? Units.space8 : 0
        width: parent.width
        height: answer.hasExplanation ? implicitHeight : 0
        visible: answer.hasExplanation
        text: answer.view.explanation
        font.pixelSize: Units.type15
        paragraphGap: Units.space4
    }
}
