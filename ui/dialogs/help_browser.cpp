#include "ui/dialogs/help_browser.h"

#include <QAccessible>
#include <QComboBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

#include "config/file.h"
#include "desktop/text_file.h"
#include "settings/utf8_text.h"
#include "ui/dialogs/help_address.h"
#include "ui/dialogs/help_case.h"
#include "ui/dialogs/help_search.h"

namespace zentro {

namespace {

constexpr std::size_t kLargestPage = 16 << 20;  // bytes
constexpr int kMargin = 4;                      // pixels
constexpr int kLeastAddressWidth = 260;         // pixels, with its caption

QString ReadPage(const QUrl& address) {
    const QString path = address.toLocalFile();
    if (QFileInfo(path).isDir()) return MissingPage(address, "This is a folder.");
    const FileContent page = ReadWholeFile(SystemPath(path), kLargestPage);
    if (page.status != FileContent::Status::Read)
        return MissingPage(address, QString::fromStdString(page.problem));
    return QString::fromStdString(Utf8Text(page.bytes));
}

/// Has a page for every address, so that the history holds what could not be shown, too.
class PageView : public QTextBrowser {
  public:
    explicit PageView(Disk& disk) : disk_(disk) {}

    QVariant loadResource(int type, const QUrl& name) override {
        if (type != QTextDocument::HtmlResource) return Part(type, source().resolved(name));
        switch (KindOf(name)) {
            case AddressKind::LocalPage:
                return disk_
                    .Ask(name.toLocalFile(), Patience::Short, [name] { return ReadPage(name); })
                    .value_or(MissingPage(name, QString(kNoAnswer) + '.'));
            case AddressKind::WebAddress: return WebAddressPage(name);
            case AddressKind::Unknown: break;
        }
        return MissingPage(name, "This is neither a file nor a web address.");
    }

  private:
    /// A picture or a style sheet of the page. The text would look itself for a picture that is not
    /// there.
    QVariant Part(int type, const QUrl& address) {
        if (!address.isLocalFile()) return QTextBrowser::loadResource(type, address);
        const std::string path = SystemPath(address.toLocalFile());
        const auto part = disk_.Ask(address.toLocalFile(), Patience::Short,
                                    [path] { return ReadWholeFile(path, kLargestPage); });
        if (part && part->status == FileContent::Status::Read)
            return QByteArray::fromStdString(part->bytes);
        if (type != QTextDocument::ImageResource) return {};
        QImage none(1, 1, QImage::Format_ARGB32);
        none.fill(Qt::transparent);
        return none;
    }

    Disk& disk_;
};

QComboBox* MakeAddressBox() {
    auto* box = new QComboBox;
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    box->setObjectName("cboAddress");
    box->setAccessibleName("Address");
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    box->setMinimumContentsLength(24);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

bool IsSearchKey(const QKeyEvent& key) {
    const bool isFindNext =
        key.key() == Qt::Key_F3 && (key.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    return isFindNext || key.matches(QKeySequence::Find);
}

}  // namespace

HelpBrowser::HelpBrowser(Dialogs& dialogs, Disk& disk, OpenOutside openOutside, QWidget* parent)
    : QWidget(parent),
      dialogs_(dialogs),
      openOutside_(openOutside ? std::move(openOutside) : &QDesktopServices::openUrl),
      page_(new PageView(disk)),
      case_(new HelpCase),
      search_(new HelpSearch(*page_)),
      address_(MakeAddressBox()),
      searching_(new QLabel),
      status_(new QLabel) {
    setObjectName("frmBrowser");
    setWindowTitle("Help");
    page_->setObjectName("brwWebBrowser");
    page_->setAccessibleName("Page");
    page_->setOpenLinks(false);
    setFocusProxy(page_);
    searching_->setObjectName("lblSearching");
    searching_->setTextFormat(Qt::PlainText);
    status_->setObjectName("lblStatus");
    status_->setTextFormat(Qt::PlainText);
    loading_.setSingleShot(true);
    connect(&loading_, &QTimer::timeout, this, &HelpBrowser::Load);
    connect(page_, &QTextBrowser::anchorClicked, this, &HelpBrowser::FollowLink);
    connect(page_, &QTextBrowser::sourceChanged, this, &HelpBrowser::ShowLoaded);
    connect(search_, &HelpSearch::TextEdited, this, [this] {
        searching_->clear();
        status_->clear();
    });
    connect(search_, &HelpSearch::PlaceNamed, this, &HelpBrowser::GoToPlace);
    connect(address_, &QComboBox::textActivated, this,
            [this](const QString& text) { Navigate(AddressFromText(text)); });
    connect(address_->lineEdit(), &QLineEdit::returnPressed, this,
            [this] { Navigate(AddressFromText(address_->currentText())); });

    auto* messages = new QHBoxLayout;
    messages->addWidget(searching_);
    messages->addWidget(status_, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(MakeToolBar());
    layout->addWidget(case_);
    layout->addWidget(page_, 1);
    layout->addWidget(search_);
    layout->addLayout(messages);
    resize(720, 560);
}

QWidget* HelpBrowser::MakeToolBar() {
    auto* bar = new QWidget;
    toolBar_ = new QHBoxLayout(bar);
    toolBar_->setContentsMargins({});
    buttons_ = new QHBoxLayout;
    toolBar_->addLayout(buttons_);
    back_ = AddButton("Back", [this] { Begin([this] { page_->backward(); }); });
    forward_ = AddButton("Forward", [this] { Begin([this] { page_->forward(); }); });
    stop_ = AddButton("Stop", [this] { Stop(); });
    AddButton("Refresh", [this] { Begin([this] { page_->reload(); }); });
    AddButton("Home", [this] { Navigate(AddressFromText(startingAddress_)); });
    AddButton("Search", [this] { search_->Open(); });
    auto* label = new QLabel("Add&ress");
    label->setBuddy(address_);
    auto* address = new QHBoxLayout;
    address->addWidget(label);
    address->addWidget(address_, 1);
    buttons_->addStretch(1);
    toolBar_->addLayout(address, 1);
    back_->setEnabled(false);
    forward_->setEnabled(false);
    stop_->setEnabled(false);
    connect(page_, &QTextBrowser::backwardAvailable, back_, &QWidget::setEnabled);
    connect(page_, &QTextBrowser::forwardAvailable, forward_, &QWidget::setEnabled);
    return bar;
}

/// Where buttons and address do not fit beside each other, the address goes below.
void HelpBrowser::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int wanted = buttons_->sizeHint().width() + kLeastAddressWidth;
    toolBar_->setDirection(width() < wanted ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

QToolButton* HelpBrowser::AddButton(const QString& name, std::function<void()> pressed) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(name);
    button->setAccessibleName(name);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, std::move(pressed));
    buttons_->addWidget(button);
    return button;
}

void HelpBrowser::SetStartingAddress(const QString& address) {
    startingAddress_ = address;
    Navigate(AddressFromText(address));
}

void HelpBrowser::SearchForHelp(const QString& topic) {
    QUrl address = AddressFromText(startingAddress_);
    address.setFragment(topic, QUrl::DecodedMode);
    Navigate(address);
    searching_->setText(tr("Searching for: %1").arg(topic));
    topic_ = {topic.toStdString(), {topic.toStdString()}};
}

void HelpBrowser::ShowTopic(const QString& address, const HelpTopic& topic) {
    startingAddress_ = address;
    QUrl url = AddressFromText(address);
    const bool isOutside = KindOf(url) == AddressKind::WebAddress;
    if (isOutside && !topic.pages.empty())
        url.setFragment(QString::fromStdString(topic.pages.front()), QUrl::DecodedMode);
    Navigate(url);
    if (!isOutside) topic_ = topic;
}

void HelpBrowser::Navigate(const QUrl& address) {
    if (address.isEmpty()) return;
    if (KindOf(address) == AddressKind::WebAddress && !OpenWebAddress(address)) return;
    Begin([this, address] { page_->setSource(address, QTextDocument::HtmlResource); });
}

/// A link to the web leaves the page as it is.
void HelpBrowser::FollowLink(const QUrl& link) {
    const QUrl address = page_->source().resolved(link);
    if (KindOf(address) != AddressKind::WebAddress) return Navigate(address);
    if (OpenWebAddress(address))
        status_->setText("Opened in your web browser: " + AddressText(address));
}

bool HelpBrowser::OpenWebAddress(const QUrl& address) {
    if (openOutside_(address)) return true;
    dialogs_.ShowMessage(this,
                         AddressText(address) +
                             "\n\nThe desktop has no program that opens this address. Copy it "
                             "into a web browser.");
    return false;
}

void HelpBrowser::Begin(std::function<void()> load) {
    pending_ = std::move(load);
    topic_ = {};
    case_->Clear();
    searching_->clear();
    status_->clear();
    setWindowTitle("Working...");
    stop_->setEnabled(true);
    loading_.start(0);
}

void HelpBrowser::Load() {
    const std::function<void()> load = std::move(pending_);
    pending_ = {};
    load();
    ShowLoaded();
    FindTopic();
}

void HelpBrowser::Stop() {
    loading_.stop();
    pending_ = {};
    ShowLoaded();
}

void HelpBrowser::ShowLoaded() {
    stop_->setEnabled(false);
    const QString title = page_->documentTitle();
    const QString shown = AddressText(page_->source());
    setWindowTitle(!title.isEmpty()  ? title
                   : shown.isEmpty() ? "Help"
                                     : page_->source().fileName());
    visited_.Add(shown);
    address_->clear();
    address_->addItems(visited_.Texts());
    address_->setEditText(shown);
    address_->lineEdit()->home(false);  // a long address shows where it begins
}

void HelpBrowser::FindTopic() {
    if (topic_.ownCase) case_->Show(*topic_.ownCase);
    for (const std::string& page : topic_.pages) {
        const std::optional<PagePlace> place =
            FindPlace(*page_->document(), QString::fromStdString(page));
        if (!place) continue;
        if (!topic_.word.empty())  // nobody searches for a chapter
            searching_->setText(tr("Searching for: %1").arg(place->name));
        return GoToPlace(place->name);
    }
    const QString word = QString::fromStdString(topic_.word);
    if (word.isEmpty()) return;
    status_->setText(tr("There is no page for \"%1\" in this book.").arg(word));
    QAccessibleEvent alert(status_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    search_->Open(word);
}

void HelpBrowser::GoToPlace(const QString& name) {
    QUrl address = page_->source();
    address.setFragment(name, QUrl::DecodedMode);
    page_->setSource(address, QTextDocument::HtmlResource);
    page_->scrollToAnchor(name);  // an address spells some signs in its own way
    ShowLoaded();
}

bool HelpBrowser::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsSearchKey(*static_cast<QKeyEvent*>(event)))
        event->accept();
    return QWidget::event(event);
}

void HelpBrowser::keyPressEvent(QKeyEvent* event) {
    if (!IsSearchKey(*event)) return QWidget::keyPressEvent(event);
    if (event->key() != Qt::Key_F3)
        return search_->Open(
            page_->textCursor().selectedText().section(QChar::ParagraphSeparator, 0, 0));
    if (event->modifiers() == Qt::NoModifier) return search_->FindNext();
    search_->FindPrevious();
}

}  // namespace zentro
