#include "views/FindCard.h"

#include "library/SatchelStore.h"
#include "views/ChoiceList.h"
#include "views/MessageLine.h"
#include "views/NodeHitDelegate.h"
#include "views/NodeHitModel.h"
#include "views/SatchelTheme.h"
#include "views/SearchField.h"
#include "views/TypedText.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QSpacerItem>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr OverlayCard::Look FindLook { .maximumWidth = 360,
                                       .maximumHeight = 590,
                                       .closePadding = 12,
                                       .backdropOpacity = 0.62,
                                       .fillOpacity = 0.98,
                                       .shadow = {
                                           .opacity = 0.6, .blurRadius = 30, .offset = 16 } };
constexpr int HorizontalPadding = 14;
constexpr int TopPadding = 12; // aligns the field with the close button
constexpr int BottomPadding = 10;
constexpr int Spacing = 10;
constexpr int CloseButtonSpace = 32; // right of the field
constexpr int VisibleHits = 10;
constexpr int ListHeight = VisibleHits * NodeHitDelegate::RowHeight + 8; // with its padding

bool isReturn(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

FindCard::FindCard(const SatchelStore &store, MainQueue &mainQueue, const QString &query,
                   QWidget *parent)
    : OverlayCard(tr("Find"), FindLook, parent)
    , m_scheduler(mainQueue, [this] { render(); })
    , m_model(new NodeHitModel(store, this))
{
    auto *const layout = new QVBoxLayout(card());
    layout->setContentsMargins(HorizontalPadding, TopPadding, HorizontalPadding, BottomPadding);
    layout->setSpacing(0);
    addField(*layout, query);
    layout->addSpacing(Spacing);
    addList(*layout);
    m_countLine = new MessageLine(SatchelTheme::secondary, card());
    m_countLine->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    layout->addWidget(m_countLine);
    m_scheduler.observe(store);
    search();
}

void FindCard::addField(QBoxLayout &layout, const QString &query)
{
    m_field = new SearchField(card());
    m_field->setText(query);
    m_field->setPlaceholderText(tr("Find in all tabs"));
    m_field->setAccessibleName(tr("Find in all tabs"));
    m_field->installEventFilter(this);
    connect(m_field, &QLineEdit::textChanged, this, [this] { search(); });
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, CloseButtonSpace, 0);
    row->addWidget(m_field);
    layout.addLayout(row);
}

void FindCard::addList(QBoxLayout &layout)
{
    m_list = new ChoiceList(card());
    m_list->setModel(m_model);
    m_list->setItemDelegate(new NodeHitDelegate(this));
    m_list->setAccessibleName(tr("Nodes found"));
    m_list->onType = [this](const QString &letters) { m_field->append(letters); };
    connect(m_list, &QAbstractItemView::clicked, this, [this](const QModelIndex &index) {
        choose(index, QGuiApplication::keyboardModifiers());
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { m_row = current.row(); });
    // The list may shrink, but does not change its height with the number of hits.
    auto *const place = new QGridLayout;
    place->addItem(new QSpacerItem(0, ListHeight, QSizePolicy::Minimum, QSizePolicy::Preferred), 0,
                   0);
    place->addWidget(m_list, 0, 0);
    layout.addLayout(place);
}

QString FindCard::query() const
{
    return m_field->text();
}

void FindCard::setQuery(const QString &query)
{
    m_field->setText(query);
}

void FindCard::selectQuery()
{
    m_field->selectAll();
    if (m_field->isVisible())
        m_field->setFocus();
}

void FindCard::search()
{
    m_model->search(query());
    select(0);
    renderCount();
}

// The library changes if the user dictates.
void FindCard::render()
{
    if (!m_model->isOutdated())
        return;
    m_model->search(query());
    select(m_row);
    renderCount();
}

void FindCard::renderCount()
{
    const int count = m_model->rowCount();
    if (count == 0)
        m_countLine->render(tr("No nodes found"));
    else if (count == 1)
        m_countLine->render(tr("1 node"));
    else
        m_countLine->render(tr("%L1 nodes").arg(count));
}

void FindCard::select(int row)
{
    const int last = m_model->rowCount() - 1;
    m_list->setCurrentIndex(m_model->index(std::clamp(row, 0, std::max(last, 0))));
}

QWidget &FindCard::firstFocus() const
{
    return *m_field;
}

void FindCard::finishAppearing()
{
    OverlayCard::finishAppearing();
    m_list->raise(); // behind the close button in the order of Tab and of the accessibility tree
}

// Keys that the field and the list ignore, and those pressed while the card fades in.
void FindCard::keyPressEvent(QKeyEvent *event)
{
    if (isReturn(event->key()))
        chooseSelected(event->modifiers());
    else if (m_list->moveSelection(event->key()))
        return;
    else if (isTypedText(*event))
        m_field->append(event->text());
    else
        OverlayCard::keyPressEvent(event);
}

bool FindCard::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_field && event->type() == QEvent::InputMethod)
        m_preedit = static_cast<QInputMethodEvent *>(event)->preeditString();
    return OverlayCard::eventFilter(object, event);
}

// An input method may leave the preedit text to the program.
void FindCard::commitPreedit()
{
    QGuiApplication::inputMethod()->commit();
    if (m_preedit.isEmpty())
        return;
    QInputMethodEvent commit;
    commit.setCommitString(m_preedit);
    QCoreApplication::sendEvent(m_field, &commit);
}

void FindCard::chooseSelected(Qt::KeyboardModifiers modifiers)
{
    commitPreedit();
    if (m_model->isOutdated())
        search();
    choose(m_list->currentIndex(), modifiers);
}

void FindCard::choose(const QModelIndex &index, Qt::KeyboardModifiers modifiers)
{
    if (!index.isValid())
        return;
    const NodeHit hit = m_model->hit(index.row());
    if (modifiers.testFlag(Qt::ControlModifier))
        onGoTo(hit, m_model->firstMatch(index.row()));
    else
        onCopy(hit);
}
