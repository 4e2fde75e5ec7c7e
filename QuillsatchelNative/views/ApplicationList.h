#pragma once

#include <QListView>

#include <functional>
#include <optional>

/// A list in a well of the house's look, of which another widget may move the selection while that
/// one keeps the keyboard.
class ApplicationList final : public QListView
{
    Q_OBJECT

public:
    explicit ApplicationList(QWidget *parent);

    /// Letters were typed while the list had the keyboard.
    std::function<void(const QString &letters)> onType = [](const QString &) {};

    /// Moves the selection as this key does that another widget was given: Up, Down, Page Up and
    /// Page Down. False if it is another key.
    bool moveSelection(int key);
    void selectFirst();

    /// What stands in the middle of the list instead of rows; nothing if empty.
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
    void paintWell();

    QString m_note;
};
