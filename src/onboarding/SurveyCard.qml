// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Onboarding
import Vellumo.Ui

/// A question with one answer. Tab goes to the chosen option, arrows to the others.
CardFrame {
    id: card

    readonly property SurveyModel survey: card.flow.survey

    title: card.survey.title
    titleSize: Units.type24
    continueName: "surveyContinueButton"
    canContinue: card.survey.answer.length > 0

    quietText: card.english ? "Skip" : "跳过"

    onProceeded: card.flow.advance()
    onSkipped: card.flow.skipQuestion()

    Grid {
        id: chips

        property int current: Math.max(0, card.survey.choice)

        /// Moves what Tab goes to, and the keyboard with it if it is among the options.
        function moveTo(option: int): void {
            if (option < 0 || option >= options.count)
                return
            if (options.itemAt(chips.current).activeFocus)
                options.itemAt(option).forceActiveFocus()
            chips.current = option
        }

        objectName: "surveyChips"
        width: parent.width
        columns: card.survey.columns
        spacing: Units.space8

        Accessible.role: Accessible.Grouping
        Accessible.name: card.title

        Keys.onLeftPressed: chips.moveTo(chips.current - 1)
        Keys.onRightPressed: chips.moveTo(chips.current + 1)
        Keys.onUpPressed: chips.moveTo(chips.current - chips.columns)
        Keys.onDownPressed: chips.moveTo(chips.current + chips.columns)

        Repeater {
            id: options

            model: card.survey.options

            SurveyChip {
                required property string modelData
                required property int index

                objectName: modelData
                width: (chips.width - (chips.columns - 1) * chips.spacing) / chips.columns
                text: card.english ? modelData : card.survey.chineseLabel(index)
                iconFile: card.survey.iconFile(index)
                isChosen: index === card.survey.choice
                activeFocusOnTab: index === chips.current
                onClicked: {
                    chips.moveTo(index)
                    card.survey.choose(modelData)
                }
            }
        }
    }
}
