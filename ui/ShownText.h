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

/// Shows the text as it is in the widget's tool tip; takes away the tool tip that there is if it is empty.
void ShowToolTip(const QHelpEvent& event, QWidget& widget, const QString& strText);
