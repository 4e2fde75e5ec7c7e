#include "views/ApplicationFileDialog.h"

#include "views/Painting.h"
#include "views/PopupMenu.h"
#include "views/SatchelTheme.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPalette>
#include <QStandardPaths>

namespace
{

using namespace Qt::StringLiterals;

constexpr QSize Size(620, 420);

QString startingFolder()
{
    const QString own = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
    return QFileInfo(own).isDir() ? own : QDir::homePath();
}

/// Our views have transparent backgrounds; Qt's lists and fields need opaque ones.
QPalette opaque(QPalette palette)
{
    const QColor background = Painting::qColor(SatchelTheme::raised);
    palette.setColor(QPalette::Base, background.darker(150));
    palette.setColor(QPalette::AlternateBase, background.darker(130));
    return palette;
}

bool isEntry(const QFileInfo &file)
{
    return file.isFile() && file.suffix() == u"desktop"_s;
}

} // namespace

ApplicationFileDialog::ApplicationFileDialog(const QString &title, const QString &prompt,
                                             QWidget *parent)
    : QFileDialog(parent, title, startingFolder())
    , m_menu(new PopupMenu(this))
{
    // A native dialog may be missing or not dark.
    setOptions(DontUseNativeDialog | ReadOnly);
    setFileMode(ExistingFile);
    setViewMode(List);
    setNameFilter(tr("Applications (*.desktop)"));
    setLabelText(Accept, prompt);
    setPalette(opaque(palette()));
    resize(Size);
    addMenu();
}

// Replaces the context menus of Qt's views, which block, and crash if the dialog is deleted while
// they are open. This is their only entry that helps to choose a file.
void ApplicationFileDialog::addMenu()
{
    auto *const showHidden = m_menu->addAction(tr("Show hidden files"));
    showHidden->setCheckable(true);
    connect(showHidden, &QAction::toggled, this,
            [this](bool isShown) { setFilter(filter().setFlag(QDir::Hidden, isShown)); });
    for (auto *const view : findChildren<QAbstractItemView *>())
        view->setContextMenuPolicy(Qt::NoContextMenu); // the dialog gets the event
}

void ApplicationFileDialog::contextMenuEvent(QContextMenuEvent *event)
{
    m_menu->open(event->globalPos(), event->reason());
}

// The base class accepts any file whose name is typed, and blocks to report a missing one.
void ApplicationFileDialog::accept()
{
    const QFileInfo chosen(selectedFiles().value(0));
    if (chosen.isDir() || isEntry(chosen))
        QFileDialog::accept();
    else
        QApplication::beep();
}
