#include "app/EditMenu.h"

#include "platform/Pasteboard.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

#include <array>

namespace
{

struct Command {
    const char *title;
    QKeyCombination keyEquivalent;
    bool (*isPossible)(const TextWidget &, const Pasteboard &);
    void (*perform)(const TextWidget &, const Pasteboard &);
    bool isEndOfGroup = false; // a separator follows
};

constexpr std::array Commands {
    Command { QT_TRANSLATE_NOOP("EditMenu", "Undo"), Qt::CTRL | Qt::Key_Z,
              [](const TextWidget &text, const Pasteboard &) { return text.canUndo(); },
              [](const TextWidget &text, const Pasteboard &) { text.undo(); } },
    Command { QT_TRANSLATE_NOOP("EditMenu", "Redo"), Qt::CTRL | Qt::SHIFT | Qt::Key_Z,
              [](const TextWidget &text, const Pasteboard &) { return text.canRedo(); },
              [](const TextWidget &text, const Pasteboard &) { text.redo(); }, true },
    Command { QT_TRANSLATE_NOOP("EditMenu", "Cut"), Qt::CTRL | Qt::Key_X,
              [](const TextWidget &text, const Pasteboard &) {
                  return text.hasSelection() && !text.isReadOnly();
              },
              [](const TextWidget &text, const Pasteboard &) { text.cut(); } },
    Command { QT_TRANSLATE_NOOP("EditMenu", "Copy"), Qt::CTRL | Qt::Key_C,
              [](const TextWidget &text, const Pasteboard &) { return text.hasSelection(); },
              [](const TextWidget &text, const Pasteboard &) { text.copy(); } },
    Command {
        QT_TRANSLATE_NOOP("EditMenu", "Paste"), Qt::CTRL | Qt::Key_V,
        [](const TextWidget &text, const Pasteboard &pasteboard) {
            return !text.isReadOnly() && pasteboard.hasText();
        },
        [](const TextWidget &text, const Pasteboard &pasteboard) { text.paste(pasteboard); } },
    Command { QT_TRANSLATE_NOOP("EditMenu", "Select All"), Qt::CTRL | Qt::Key_A,
              [](const TextWidget &text, const Pasteboard &) { return !text.isEmpty(); },
              [](const TextWidget &text, const Pasteboard &) { text.selectAll(); } },
};

} // namespace

void EditMenu::fill(QMenu &menu, const FindText &findText, const Pasteboard &pasteboard)
{
    for (const auto &command : Commands) {
        auto *const entry = menu.addAction(QCoreApplication::translate("EditMenu", command.title));
        entry->setShortcut(command.keyEquivalent);
        QObject::connect(&menu, &QMenu::aboutToShow, entry,
                         [&command, entry, findText, &pasteboard] {
                             const auto text = findText();
                             entry->setEnabled(text && command.isPossible(*text, pasteboard));
                         });
        QObject::connect(entry, &QAction::triggered, &menu, [&command, findText, &pasteboard] {
            if (const auto text = findText())
                command.perform(*text, pasteboard);
        });
        if (command.isEndOfGroup)
            menu.addSeparator();
    }
}
