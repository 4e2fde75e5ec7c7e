#pragma once

#include <QFileDialog>

class PopupMenu;

/// Lets the user choose a desktop entry anywhere on disk. `fileSelected` reports its path.
class ApplicationFileDialog final : public QFileDialog
{
    Q_OBJECT

public:
    /// `prompt` is the title of the accept button.
    ApplicationFileDialog(const QString &title, const QString &prompt, QWidget *parent);

protected:
    void accept() override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void addMenu();

    PopupMenu *m_menu;
};
