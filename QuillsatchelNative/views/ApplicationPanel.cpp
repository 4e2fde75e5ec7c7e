#include "views/ApplicationPanel.h"

#include "platform/MainQueue.h"
#include "platform/Workspace.h"
#include "views/ApplicationFileDialog.h"
#include "views/ApplicationIcons.h"
#include "views/ApplicationListModel.h"
#include "views/ApplicationRowDelegate.h"
#include "views/ChoiceList.h"
#include "views/PushButton.h"
#include "views/SearchField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr QSize Size(420, 480);
constexpr QSize SmallestSize(320, 300);
constexpr int Padding = 12;
constexpr int Spacing = 10;
constexpr int ButtonSpacing = 8;
constexpr auto LoadingNoteDelay = 500ms; // an earlier note would only flicker

bool isReturn(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

ApplicationPanel::ApplicationPanel(const QString &title, const QString &prompt,
                                   Workspace &workspace, MainQueue &mainQueue,
                                   std::function<void(QDialog &)> decorate, QWidget *parent)
    : QDialog(parent)
    , m_decorate(std::move(decorate))
    , m_model(new ApplicationListModel(this))
{
    setWindowTitle(title);
    setMinimumSize(SmallestSize);
    resize(Size);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(Padding, Padding, Padding, Padding);
    layout->setSpacing(Spacing);
    addField(*layout);
    addList(*layout, workspace, mainQueue);
    addButtons(*layout, prompt);
    m_field->setFocus();
    if (parent)
        addActions(parent->actions()); // shortcuts of a hidden parent never fire
    renderSelection();
    listApplications(workspace, mainQueue);
    m_decorate(*this);
    m_pointSize.setSizes(size(), minimumSize()); // including the decoration
}

ApplicationPanel::~ApplicationPanel()
{
    report();
}

void ApplicationPanel::addField(QBoxLayout &layout)
{
    m_field = new SearchField(this);
    m_field->setPlaceholderText(tr("Search"));
    m_field->setAccessibleName(tr("Search applications"));
    connect(m_field, &QLineEdit::textChanged, this, [this] { search(); });
    layout.addWidget(m_field);
}

void ApplicationPanel::addList(QBoxLayout &layout, Workspace &workspace, MainQueue &mainQueue)
{
    auto *const icons =
        new ApplicationIcons(ApplicationRowDelegate::IconSize, workspace, mainQueue, this);
    icons->onRepaint = [this] { m_list->viewport()->update(); };
    m_list = new ChoiceList(this);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ApplicationRowDelegate(*icons, this));
    m_list->setAccessibleName(tr("Applications"));
    m_list->onType = [this](const QString &letters) { m_field->append(letters); };
    connect(m_list, &QAbstractItemView::doubleClicked, this, [this] { choose(); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { renderSelection(); });
    layout.addWidget(m_list);
}

void ApplicationPanel::addButtons(QBoxLayout &layout, const QString &prompt)
{
    auto *const row = new QHBoxLayout;
    row->setSpacing(ButtonSpacing);
    auto *const other = new PushButton(tr("Other\u2026"), this);
    connect(other, &QAbstractButton::clicked, this, [this] { openFileDialog(); });
    row->addWidget(other);
    row->addStretch();
    auto *const cancel = new PushButton(tr("Cancel"), this);
    connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
    row->addWidget(cancel);
    m_chooseButton = new PushButton(prompt, this);
    m_chooseButton->setDefault(true);
    connect(m_chooseButton, &QAbstractButton::clicked, this, [this] { choose(); });
    row->addWidget(m_chooseButton);
    layout.addLayout(row);
}

void ApplicationPanel::listApplications(Workspace &workspace, MainQueue &mainQueue)
{
    workspace.listApplications(
        [panel = QPointer(this)](const std::vector<Application> &applications) {
            if (panel)
                panel->showApplications(applications);
        });
    mainQueue.asyncAfter(LoadingNoteDelay, [panel = QPointer(this)] {
        if (!panel)
            return;
        panel->m_isLoadingNoteDue = true;
        panel->renderNote();
    });
}

void ApplicationPanel::showApplications(const std::vector<Application> &applications)
{
    m_isListed = true;
    m_model->setApplications(applications);
    search();
}

void ApplicationPanel::search()
{
    const QString typed = m_field->text();
    m_model->search(typed);
    if (!typed.trimmed().isEmpty())
        m_list->selectFirst();
    renderSelection();
    renderNote();
}

void ApplicationPanel::renderSelection()
{
    m_chooseButton->setEnabled(m_list->selectionModel()->hasSelection());
}

void ApplicationPanel::renderNote()
{
    if (m_model->rowCount() > 0)
        m_list->setNote({});
    else if (m_isListed)
        m_list->setNote(tr("No applications found"));
    else if (m_isLoadingNoteDue)
        m_list->setNote(tr("Loading\u2026"));
}

void ApplicationPanel::keyPressEvent(QKeyEvent *event)
{
    if (isReturn(event->key()))
        choose();
    else if (!m_list->moveSelection(event->key()))
        QDialog::keyPressEvent(event);
}

void ApplicationPanel::choose()
{
    const auto selected = m_list->selectionModel()->selectedIndexes();
    if (!selected.isEmpty())
        finish(selected.front().data(ApplicationListModel::pathRole).value<std::string>());
}

void ApplicationPanel::finish(const std::string &path)
{
    m_chosen = path;
    accept();
}

void ApplicationPanel::openFileDialog()
{
    if (!m_fileDialog) {
        m_fileDialog = new ApplicationFileDialog(windowTitle(), m_chooseButton->text(), this);
        connect(m_fileDialog, &QFileDialog::fileSelected, this,
                [this](const QString &path) { finish(path.toStdString()); });
        m_decorate(*m_fileDialog);
    }
    m_fileDialog->show();
    m_fileDialog->raise();
    m_fileDialog->activateWindow();
}

void ApplicationPanel::done(int result)
{
    QDialog::done(result);
    deleteLater();
    report();
}

void ApplicationPanel::report()
{
    if (const auto receive = std::exchange(onFinish, {}))
        receive(m_chosen);
}
