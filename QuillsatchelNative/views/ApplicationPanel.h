#pragma once

#include "views/PointSize.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class ApplicationFileDialog;
class ChoiceList;
class ApplicationListModel;
class MainQueue;
class PushButton;
class QBoxLayout;
class QKeyEvent;
class SearchField;
class Workspace;
struct Application;

/// A dialog in which the user searches the installed applications and chooses one, or a desktop
/// entry elsewhere on disk. The arrow keys move the selection while the search field keeps the
/// focus. The dialog deletes itself once it is closed.
class ApplicationPanel final : public QDialog
{
    Q_OBJECT

public:
    /// Requests the applications from the workspace and lists them once they arrive. `prompt` is
    /// the title of the accept button. The dialog stays above the window of `parent`. `decorate` is
    /// called for this dialog and for the one that "Other…" opens, each before it is shown.
    ApplicationPanel(const QString &title, const QString &prompt, Workspace &workspace,
                     MainQueue &mainQueue, std::function<void(QDialog &)> decorate,
                     QWidget *parent);
    ~ApplicationPanel() override;

    ApplicationPanel(const ApplicationPanel &) = delete;
    ApplicationPanel &operator=(const ApplicationPanel &) = delete;

    /// Called once, when the dialog is closed or deleted, with the path of the chosen desktop entry
    /// (UTF-8), or none if the user chose none.
    std::function<void(const std::optional<std::string> &path)> onFinish =
        [](const std::optional<std::string> &) {};

    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addField(QBoxLayout &layout);
    void addList(QBoxLayout &layout, Workspace &workspace, MainQueue &mainQueue);
    void addButtons(QBoxLayout &layout, const QString &prompt);
    void listApplications(Workspace &workspace, MainQueue &mainQueue);
    void showApplications(const std::vector<Application> &applications);
    void search();
    void renderSelection();
    void renderNote();
    void choose();
    void finish(const std::string &path);
    void openFileDialog();
    void report();

    std::function<void(QDialog &)> m_decorate;
    PointSize m_pointSize { *this };
    ApplicationListModel *m_model;
    SearchField *m_field = nullptr;
    ChoiceList *m_list = nullptr;
    PushButton *m_chooseButton = nullptr;
    ApplicationFileDialog *m_fileDialog = nullptr; // created when first used
    std::optional<std::string> m_chosen;
    bool m_isListed = false;
    bool m_isLoadingNoteDue = false;
};
