#include "views/TypedText.h"

#include <QKeyEvent>

bool isTypedText(const QKeyEvent &event)
{
    const QString text = event.text();
    const bool isShortcut =
        (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    return !isShortcut && !text.isEmpty() && !text.front().isSpace() &&
           (text.front().isPrint() || text.front().isSurrogate());
}
