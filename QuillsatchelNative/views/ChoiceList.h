#pragma once

#include <QListView>

#include <functional>
#include <optional>

/// A list on a rounded dark background. Another widget can move its selection and keep the keyboard
/// focus meanwhile.
class ChoiceList final : public QListView
{
    Q_OBJECT

public:
    explicit ChoiceList(QWidget *parent);

    /// For delegates: the background of a row that is selected, below the pointer or focused.
    static void paintRowBackground(QPainter &painter, const QStyleOptionViewItem &option);

    /// The user typed letters while the list had the focus.
    std::function<void(const QString &letters)> onType = [](const QString &) {};

    /// Handles a key that another widget received: Up, Down, Page Up and Page Down move the
    /// selection. False for any other key.
    bool moveSelection(int key);
    void selectFirst();

    /// Shows a text in the middle of a list without rows; an empty text hides it.
    void setNote(const QString &note);

    void keyboardSearch(const QString &letters) override { onType(letters); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    static std::optional<CursorAction> actionOf(int key);
    void move(CursorAction action);
    void paintBackground();

    QString m_note;
};
