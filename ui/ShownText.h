// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QHelpEvent;
class QWidget;

// Texts of cameras, which come from the network and may be anything, in places with room for one short line.

/// The text with a blank for each character that would begin another line or jump to a tabulator.
QString InOneLine(QString strText);

/// The style sheet rule for a widget's tool tips.
QString ToolTipSheet();

/// Shows the text as it is in the widget's tool tip if it was cut; takes away the tool tip that there is if
/// not.
void ShowToolTipOfCutText(const QHelpEvent& event, QWidget& widget, const QString& strText, bool bCut);
