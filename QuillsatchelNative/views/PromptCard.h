#pragma once

#include "library/PromptBlock.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class ActionButton;
class DragHandle;
class NodeEditor;
class SymbolButton;

/// One node as an editable card. It owns no data: it shows what `render` is given and reports
/// what the user does through its callbacks, on the main thread. All cards have one height.
class PromptCard final : public QWidget
{
    Q_OBJECT

public:
    explicit PromptCard(QWidget *parent);

    /// The user changed the text; receives the whole of it.
    std::function<void(const std::string &)> onText = [](const std::string &) {};
    /// The user chose a colour, perhaps the current one.
    std::function<void(BlockColor)> onColor = [](BlockColor) {};
    /// The button of this name was pressed.
    std::function<void()> onCopy = [] {};
    std::function<void()> onPaste = [] {};
    std::function<void()> onLaunch = [] {};
    std::function<void()> onDelete = [] {};
    std::function<void()> onDictate = [] {};
    /// The user asks to move the node by so many places, down if positive.
    std::function<void(const QUuid &, int)> onReorder = [](const QUuid &, int) {};

    /// Shows the block, marked as just copied or as being dictated into if so said. A block with
    /// another id is another node: undo then begins anew.
    void render(const PromptBlock &block, bool isCopied, bool isDictating);

    /// The id of the node shown last; null before the first.
    QUuid blockID() const { return m_blockID.value_or(QUuid()); }

    /// Whether the text is an http or https address and nothing else, white space around it aside.
    bool isURL() const { return m_isURL; }

    /// The handle's vertical distance from where it is at rest, in points; 0 unless dragged.
    qreal dragTranslation() const { return m_dragTranslation; }

    /// Lets the user type into the node.
    void focusEditor();

    /// The height of every card, in points.
    static int cardHeight();
    /// How many places a drag that ended at this vertical distance moves the node.
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
