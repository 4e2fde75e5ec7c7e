#pragma once

#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "views/ApplicationFileDialog.h"
#include "views/ApplicationPanel.h"
#include "views/ChoiceList.h"
#include "views/Input.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// A panel with a fake workspace; records its answers.
class ApplicationPanelFixture : public testing::Test
{
protected:
    using Names = std::vector<std::string>;
    using Answers = std::vector<std::optional<std::string>>;

    ApplicationPanelFixture()
    {
        // Qt's file dialog stores its state there.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
        workspace.icon = QImage(48, 48, QImage::Format_ARGB32_Premultiplied);
        workspace.icon.fill(Qt::green);
        workspace.applications = {
            { "/apps/calc.desktop", "Calculator", "Do sums", "math;" },
            { "/apps/cal.desktop", "Calendar", "Look at your days", "dates;" },
            { "/apps/mail.desktop", "Mail", "Send messages", "" },
            { "/apps/tables.desktop", "Tables", "Calculate in rows and columns", "" },
            { "/apps/view.desktop", "Viewer", "", "pictures;" },
        };
    }

    void TearDown() override { delete panel; }

    /// Shows a panel whose application list has not arrived yet.
    void openEmpty()
    {
        panel = new ApplicationPanel(
            QStringLiteral("Choose an Application"), QStringLiteral("Add Launcher"), workspace,
            mainQueue, [this](QDialog &dialog) { decorated.push_back(&dialog); }, nullptr);
        panel->onFinish = [this](const auto &path) { answers.push_back(path); };
        panel->show();
        panel->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(panel));
    }

    void open()
    {
        openEmpty();
        workspace.finishListing();
        settle();
    }

    void install(int count)
    {
        workspace.applications.clear();
        for (int number = 0; number < count; ++number) {
            const std::string name = "Application " + std::to_string(number);
            workspace.applications.push_back({ "/apps/" + name, name, "Comment", "" });
        }
    }

    /// Runs pending events and work, with deferred deletions.
    void settle()
    {
        QCoreApplication::processEvents();
        mainQueue.runPending();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    QLineEdit &field() const { return *panel->findChild<QLineEdit *>(); }

    ChoiceList &list() const { return *panel->findChild<ChoiceList *>(); }

    QAbstractButton &button(const std::string &name) const { return *Input::button(*panel, name); }

    ApplicationFileDialog *fileDialog() const
    {
        auto *const dialog = panel->findChild<ApplicationFileDialog *>();
        return dialog && dialog->isVisible() ? dialog : nullptr;
    }

    Names shownNames() const
    {
        Names names;
        const auto &model = *list().model();
        for (int row = 0; row < model.rowCount(); ++row)
            names.push_back(model.index(row, 0).data().toString().toStdString());
        return names;
    }

    /// Empty without a selection.
    std::string selectedName() const
    {
        const auto selected = list().selectionModel()->selectedIndexes();
        return selected.isEmpty() ? "" : selected.front().data().toString().toStdString();
    }

    /// The text that the list shows instead of rows, as exposed to assistive technology.
    std::string note() const { return list().accessibleDescription().toStdString(); }

    /// In window coordinates.
    QPoint rowCenter(int row) const
    {
        const QModelIndex index = list().model()->index(row, 0);
        return list().viewport()->mapTo(panel.data(), list().visualRect(index).center());
    }

    void clickRow(int row) const { Input::click(*panel, rowCenter(row)); }

    void doubleClickRow(int row) const
    {
        QTest::mouseDClick(panel->windowHandle(), Qt::LeftButton, {}, rowCenter(row));
    }

    void type(const std::string &letters) const { Input::type(*panel, letters); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        Input::key(*panel, key, modifiers);
    }

    ManualMainQueue mainQueue;
    FakeWorkspace workspace;
    std::vector<QDialog *> decorated;
    QPointer<ApplicationPanel> panel;
    Answers answers;

private:
    QTemporaryDir m_settings;
};
