#pragma once

#include "views/PointSize.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class ApplicationFileDialog;
class ApplicationList;
class ApplicationListModel;
class PushButton;
class QBoxLayout;
class QKeyEvent;
class TextField;
class Workspace;
struct Application;

/// A window in which the user searches the installed applications and chooses one, or a desktop
/// entry elsewhere on disk. The keyboard stays in the search field while its keys move the
/// selection. The window deletes itself when it has ended, in whatever way.
class ApplicationPanel final : public QDialog
{
    Q_OBJECT

public:
    /// Asks the workspace for its applications, which fill the list when they come. `prompt` is the
    /// title of the confirming button. The panel stays above the window of `parent`.
    /// `decorate` is called for this dialog and for the one behind "Other…", before either is
    /// shown.
    ApplicationPanel(const QString &title, const QString &prompt, Workspace &workspace,
                     std::function<void(QDialog &)> decorate, QWidget *parent);
    ~ApplicationPanel() override;

    ApplicationPanel(const ApplicationPanel &) = delete;
    ApplicationPanel &operator=(const ApplicationPanel &) = delete;

    /// The panel has ended, however it came to that: the path of the chosen application's desktop
    /// entry (UTF-8), none if there is none. Called once.
    std::function<void(const std::optional<std::string> &path)> onFinish =
        [](const std::optional<std::string> &) {};

    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addField(QBoxLayout &layout);
    void addList(QBoxLayout &layout, Workspace &workspace);
    void addButtons(QBoxLayout &layout, const QString &prompt);
    void listApplications(Workspace &workspace);
    void showApplications(const std::vector<Application> &applications);
    void search();
    void renderSelection();
    void renderNote();
    void typeIntoField(const QString &letters);
    void choose();
    void finish(const std::string &path);
    void openFileDialog();
    void tell();

    std::function<void(QDialog &)> m_decorate;
    PointSize m_pointSize { *this };
    ApplicationListModel *m_model;
    TextField *m_field = nullptr;
    ApplicationList *m_list = nullptr;
    PushButton *m_chooseButton = nullptr;
    ApplicationFileDialog *m_fileDialog = nullptr; // from its first use on
    std::optional<std::string> m_chosen;
    bool m_isListed = false;
    bool m_isLate = false; // so long without the list that the user is told
};
