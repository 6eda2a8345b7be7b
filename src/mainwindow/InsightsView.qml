// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Insights
import Vellumo.MainWindow

/// The page of insights in the main window.
InsightsPage {
    id: view

    required property MainWindowModel main

    insights: view.main.insights
    library: view.main.library
    onPlaceChosen: index => view.main.goToPlace(index)
    onDayChosen: index => view.main.goToDay(index)
    onMonthChosen: index => view.main.goToMonth(index)
}
