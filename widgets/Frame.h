// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <initializer_list>

class QBoxLayout;
class QHBoxLayout;
class QImageButton;
class QSize;
class QVBoxLayout;
class QWidget;

// What the frames of the kit's windows are put together from. Everything is made without a parent and belongs
// to the window as soon as the layout does that it is put into.

/// Whether the system calls itself Ubuntu, where windows have their buttons on the left. Asks the program
/// `uname`, for at most a minute; without an answer: no.
bool IsUbuntuSystem();

/// A plain widget; its name is what style sheets select it by. A width or height of 0 is left to the layout.
QWidget* CreateFramePiece(const QString& strName, const QString& strSheet, const QSize& size);

/// A button of 30 x 30 pixels that the keyboard passes by. Its pictures are `strPicture`.png and, for hover,
/// pressed and disabled, the same with "_hov", "_sel" and "_dis" (":/Dorn/Resources/dialog/").
QImageButton* CreateFrameButton(const QString& strPicture);

/// Has the window stay above its owner and be raised with it. For its showEvent(): window systems do so only
/// for what they know as a dialog of the owner's, which a window without a parent and one of the type
/// Qt::Window are not. The widget's own flags stay as they are.
void KeepAboveOwner(QWidget& window, const QWidget& owner);

/// On Wayland only the compositor moves windows: hands the drag with the pointer over to it, until the button
/// is released. False elsewhere, where windows move themselves.
bool DragByCompositor(const QWidget& window);

/// No margins, no spacing.
QHBoxLayout* CreateFrameRow(std::initializer_list<QWidget*> pieces);
QVBoxLayout* CreateFrameColumn(std::initializer_list<QBoxLayout*> rows);
