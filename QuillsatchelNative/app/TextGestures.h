#pragma once

#include <QObject>
#include <QPointer>

class Pasteboard;
class PopupMenu;
class QContextMenuEvent;
class QKeyEvent;
class QMouseEvent;
class QWidget;

/// Handles pasting, middle clicks and context menus in all text widgets. Qt's own handling asks the
/// clipboard's owner again and again and waits five seconds each time.
class TextGestures final : public QObject
{
    Q_OBJECT

public:
    /// Works for all windows while this lives. Needs the QApplication; `pasteboard` must outlive
    /// this object.
    explicit TextGestures(const Pasteboard &pasteboard);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool pressKey(const QKeyEvent &event, QWidget &text) const;
    bool releaseButton(const QMouseEvent &event, QWidget &text) const;
    void insertSelection(QWidget &text) const;
    void openMenu(QWidget &text, const QContextMenuEvent &event);

    const Pasteboard &m_pasteboard;
    QPointer<PopupMenu> m_menu; // the one that is open
};
