// SPDX-License-Identifier: Apache-2.0
#include "tests/widgets/WindowProbe.h"

#include "widgets/QImageButton.h"

#include <QCoreApplication>
#include <QMetaMethod>

namespace {

QStringList ownMethods(const QMetaObject& type, QMetaMethod::MethodType kind)
{
    QStringList names;
    for (int index = type.methodOffset(); index < type.methodCount(); ++index) {
        if (type.method(index).methodType() == kind)
            names.append(type.method(index).methodSignature());
    }
    return names;
}

} // namespace

QImageButton* buttonShowing(const QWidget& window, const QString& picture)
{
    const QString path = QStringLiteral("(:/Dorn/Resources/dialog/%1.png)").arg(picture);
    for (QImageButton* const button : window.findChildren<QImageButton*>()) {
        if (button->styleSheet().contains(path))
            return button;
    }
    return nullptr;
}

QRect placeOf(const QWidget& widget)
{
    return {widget.mapTo(widget.window(), QPoint()), widget.size()};
}

QStringList ownSlots(const QMetaObject& type)
{
    return ownMethods(type, QMetaMethod::Slot);
}

QStringList ownSignals(const QMetaObject& type)
{
    return ownMethods(type, QMetaMethod::Signal);
}

void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& position)
{
    QMouseEvent event(type, position, widget.mapToGlobal(position), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

MouseLog::MouseLog(QWidget& widget)
{
    widget.installEventFilter(this);
}

bool MouseLog::eventFilter(QObject* /*watched*/, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        lastMove = static_cast<QMouseEvent*>(event)->globalPos();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        ++presses;
        break;
    case QEvent::MouseButtonRelease:
        ++releases;
        break;
    default:
        break;
    }
    return false;
}
