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

/// The program's own views shine through to what they lie on; lists and fields of Qt's need a
/// ground.
QPalette opaque(QPalette palette)
{
    const QColor ground = Painting::qColor(SatchelTheme::raised);
    palette.setColor(QPalette::Base, ground.darker(150));
    palette.setColor(QPalette::AlternateBase, ground.darker(130));
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
    // The desktop's own is not sure to be there, nor to be dark.
    setOptions(DontUseNativeDialog | ReadOnly);
    setFileMode(ExistingFile);
    setViewMode(List);
    setNameFilter(tr("Applications (*.desktop)"));
    setLabelText(Accept, prompt);
    setPalette(opaque(palette()));
    resize(Size);
    addMenu();
}

// In place of the menus of Qt's views, which block, and crash if the dialog is deleted meanwhile.
// Of their entries only this one is of use for choosing.
void ApplicationFileDialog::addMenu()
{
    auto *const showHidden = m_menu->addAction(tr("Show hidden files"));
    showHidden->setCheckable(true);
    connect(showHidden, &QAction::toggled, this,
            [this](bool isShown) { setFilter(filter().setFlag(QDir::Hidden, isShown)); });
    for (auto *const view : findChildren<QAbstractItemView *>())
        view->setContextMenuPolicy(Qt::NoContextMenu); // leaves the event to the dialog
}

void ApplicationFileDialog::contextMenuEvent(QContextMenuEvent *event)
{
    m_menu->open(event->globalPos(), event->reason());
}

// Qt's own would take any file whose name is typed, and hold up the program to say that one is
// missing.
void ApplicationFileDialog::accept()
{
    const QFileInfo chosen(selectedFiles().value(0));
    if (chosen.isDir() || isEntry(chosen))
        QFileDialog::accept();
    else
        QApplication::beep();
}
