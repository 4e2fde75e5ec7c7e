#include "views/LauncherSettingsCard.h"

#include "launchers/LauncherSlots.h"
#include "launchers/LauncherStore.h"
#include "views/LauncherSlotEditor.h"
#include "views/Painting.h"
#include "views/SatchelTheme.h"
#include "views/ScrollView.h"
#include "views/SymbolView.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <array>

namespace
{

using namespace Qt::StringLiterals;

constexpr OverlayCard::Look SettingsLook { .maximumWidth = 360,
                                           .maximumHeight = 560,
                                           .backdropOpacity = 0.62,
                                           .fillOpacity = 0.98,
                                           .shadow = {
                                               .opacity = 0.6, .blurRadius = 30, .offset = 16 } };
constexpr int EditorCount = std::tuple_size_v<LauncherSlots>;
constexpr int HorizontalPadding = 14;
constexpr int VerticalPadding = 16;
constexpr int Spacing = 12;
constexpr int HeaderPadding = 44; // clears the close button and breaks the note evenly
constexpr int HeaderSpacing = 3;
constexpr QSize HeaderSymbolSize(24, 24);
constexpr int EditorSpacing = 8;

} // namespace

LauncherSettingsCard::LauncherSettingsCard(LauncherStore &store, MainQueue &mainQueue,
                                           QWidget *parent)
    : OverlayCard(tr("Quick Launchers"), SettingsLook, parent)
    , m_store(store)
    , m_scheduler(mainQueue, [this] { render(); })
{
    // The list is as wide as the card, so that its scroll indicator lies in the padding.
    auto *const layout = new QVBoxLayout(card());
    layout->setContentsMargins(0, VerticalPadding, 0, VerticalPadding);
    layout->setSpacing(Spacing);
    addHeader(*layout);
    addEditors(*layout);
    m_scheduler.observe(store);
}

void LauncherSettingsCard::addHeader(QBoxLayout &layout)
{
    auto *const header = new QVBoxLayout;
    header->setContentsMargins(HeaderPadding, 0, HeaderPadding, 0);
    header->setSpacing(HeaderSpacing);
    header->addWidget(
        new SymbolView(u"square.grid.2x2"_s, HeaderSymbolSize, SatchelTheme::accent, card()), 0,
        Qt::AlignHCenter);
    addText(*header, tr("Quick Launchers"), Painting::systemFont(16, QFont::DemiBold));
    addText(*header,
            tr("Add up to five applications or websites to the Quillsatchel menu-bar menu."),
            Painting::systemFont(10), SatchelTheme::secondary);
    layout.addLayout(header);
}

void LauncherSettingsCard::addEditors(QBoxLayout &layout)
{
    m_list = new ScrollView(card());
    layout.addWidget(m_list);
    auto *const rows = new QVBoxLayout(m_list->content());
    rows->setContentsMargins(HorizontalPadding, 0, HorizontalPadding, 0);
    rows->setSpacing(EditorSpacing);
    for (int slot = 0; slot < EditorCount; ++slot) {
        auto *const editor = makeEditor(slot);
        rows->addWidget(editor);
        m_editors.push_back(editor);
    }
}

LauncherSlotEditor *LauncherSettingsCard::makeEditor(int slot)
{
    auto *const editor = new LauncherSlotEditor(m_store, slot, m_list->content());
    editor->onWebsite = [this, slot](const std::string &text) {
        return m_store.setWebsite(text, slot);
    };
    editor->onChooseApplication = [this, slot] { m_store.chooseApplication(slot); };
    editor->onClear = [this, slot] { m_store.clear(slot); };
    editor->onInvalidURL = [this, editor] { m_list->reveal(*editor); };
    return editor;
}

void LauncherSettingsCard::render()
{
    for (auto *const editor : m_editors)
        editor->render();
}

void LauncherSettingsCard::keyPressEvent(QKeyEvent *event)
{
    if (!m_list->scroll(event->key()))
        OverlayCard::keyPressEvent(event);
}
