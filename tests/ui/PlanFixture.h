// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/ui/WindowFixture.h"
#include "ui/QPlanWindow.h"

#include <QSemaphore>
#include <QTemporaryDir>

/// The window that Plan opens, beside the main window, and a folder for site files. It is used as a person
/// would, file dialogs included.
class PlanFixture : public WindowFixture
{
protected:
    enum Column
    {
        PlaceName,
        Camera,
        Now,
        Wanted,
        ToDo,
        State
    };

    ~PlanFixture() override;
    void TearDown() override;

    /// Two cameras, which the file of leftAndRight() calls left and right: the one as it is to be, the other
    /// not.
    void addLeftAndRight();
    static QString leftAndRight();

    /// Writes a site file; its path.
    QString write(const QString& text, const QString& name = QStringLiteral("line.yaml")) const;
    static QString contentOf(const QString& file);

    /// Presses Plan, and waits until its window is there.
    void openPlanWindow();
    /// Presses Open there and chooses the file; waits until it has been looked at.
    void openFile(const QString& file);
    /// Both, with a file of that text; its path.
    QString openPlanOf(const QString& text);
    /// The next file dialog gets this file.
    void chooseNextFile(const QString& file);

    static QPlanWindow* shown();
    static bool isIdle();
    static QTableWidget* places();
    static QString cell(int row, Column column);
    static void selectPlace(int row);
    /// What stands in the window beside the table, all of it.
    static QStringList texts();
    /// Whether a text with that in it stands there, in a while.
    static bool says(const QString& part);
    static QAbstractButton* buttonOf(const char* text);
    static bool isUsable(const char* buttonText) { return buttonOf(buttonText)->isEnabled(); }
    static void press(const char* buttonText);
    /// Waits for its end.
    static void pressAndWait(const char* buttonText);

    /// Changes that were begun.
    std::ptrdiff_t changeCount() const;

    /// Keeps what cameras do under way, being forced, until the test lets it go on.
    void holdChanges();

    QTemporaryDir folder;
    QSemaphore held;
    QSemaphore go;
};
