#pragma once

#include "library/PromptBlock.h"
#include "library/TextRange.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class ActionButton;
class DragHandle;
class NodeEditor;
class SymbolButton;

/// A node as an editable card. It owns no data: it shows what `render` receives and reports what
/// the user does through its callbacks. All cards have the same height.
class PromptCard final : public QWidget
{
    Q_OBJECT

public:
    explicit PromptCard(QWidget *parent);

    /// The user changed the text. Receives the whole text.
    std::function<void(const std::string &)> onText = [](const std::string &) {};
    /// The user chose a colour, perhaps the current one.
    std::function<void(BlockColor)> onColor = [](BlockColor) {};
    /// The user pressed the button of this name.
    std::function<void()> onCopy = [] {};
    std::function<void()> onPaste = [] {};
    std::function<void()> onLaunch = [] {};
    std::function<void()> onDelete = [] {};
    std::function<void()> onDictate = [] {};
    /// The user asks to move the node by a number of places, positive downwards.
    std::function<void(const QUuid &, int)> onReorder = [](const QUuid &, int) {};

    /// Shows the block. `isCopied` and `isDictating` select the marked looks. A block with another
    /// id is another node, which starts with an empty undo history.
    void render(const PromptBlock &block, bool isCopied, bool isDictating);

    /// The id of the node shown; null before the first `render`.
    QUuid blockID() const { return m_blockID.value_or(QUuid()); }

    /// Whether the text is an http or https address, apart from white space around it.
    bool isURL() const { return m_isURL; }

    /// The vertical distance in points by which the handle is dragged; 0 without a drag.
    qreal dragTranslation() const { return m_dragTranslation; }

    /// Moves the focus to the editor.
    void focusEditor();
    /// Selects a part of the node's text in the editor.
    void select(const TextRange &range);

    /// The height of every card, in points.
    static int cardHeight();
    /// The number of places by which a drag over this vertical distance moves the node.
    static int reorderSteps(qreal translation);

protected:
    void moveEvent(QMoveEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void connectHandle();
    void renderText(const PromptBlock &block);
    void renderColor(BlockColor color);
    void renderActions();
    void layOutActions();
    void showColorMenu();
    void closeMenus();

    std::optional<QUuid> m_blockID;
    BlockColor m_color;
    bool m_isEmpty = true;
    bool m_isURL = false;
    bool m_isCopied = false;
    bool m_isDictating = false;
    qreal m_dragTranslation = 0;

    DragHandle *m_handle;
    SymbolButton *m_colorButton;
    SymbolButton *m_deleteButton;
    NodeEditor *m_editor;
    ActionButton *m_pasteButton;
    ActionButton *m_dictateButton;
    ActionButton *m_launchButton;
    ActionButton *m_copyButton;
};
