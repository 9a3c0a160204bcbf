#include "ui/editor/editor_marks.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <Qsci/qscistyle.h>
#include <algorithm>
#include <cmath>
#include <span>

#include "ui/editor/completion.h"
#include "ui/editor/scintilla_text.h"
#include "ui/support/colours.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

/// The numbers under which the editing component knows the marks.
enum Marker : std::uint8_t {
    kWarningMark,
    kErrorMark,
    kHereMark,
    kHereLine,
    kSoftMark,
    kSoftLine,
    kFaultLine,
    kFullBreakpoint,
    kConditionalBreakpoint,
    kHollowBreakpoint,
    kLampMark,
    kAdviceMark,
};
constexpr int kBreakpointMarks =
    1 << kFullBreakpoint | 1 << kConditionalBreakpoint | 1 << kHollowBreakpoint;
enum Indicator : std::uint8_t { kErrorLine = 8, kWarningLine = 9, kAdviceLine = 10 };

/// How messages of a severity are marked.
struct SeverityLook {
    Severity severity;
    int marker;
    int indicator;
    const char* kind;
};

constexpr SeverityLook kSeverityLooks[] = {
    {Severity::Error, kErrorMark, kErrorLine, "Error: "},
    {Severity::Warning, kWarningMark, kWarningLine, "Warning: "},
    {Severity::Advice, kAdviceMark, kAdviceLine, "Advice: "},
};

const SeverityLook& LookOf(Severity severity) {
    const auto* const look = std::ranges::find(kSeverityLooks, severity, &SeverityLook::severity);
    return look == std::end(kSeverityLooks) ? kSeverityLooks[1] : *look;
}

/// Where the piece stands as a word of its own; nothing: nowhere or more than once.
std::optional<std::size_t> OnlyPlaceOf(std::string_view line, std::string_view piece) {
    if (piece.empty()) return std::nullopt;
    const auto isWordAt = [&](std::size_t at) {
        const auto joins = [&](char a, char b) { return IsNameCharacter(a) && IsNameCharacter(b); };
        const std::size_t end = at + piece.size();
        return (at == 0 || !joins(line[at - 1], piece.front())) &&
               (end == line.size() || !joins(piece.back(), line[end]));
    };
    std::optional<std::size_t> place;
    for (std::size_t at = line.find(piece); at != std::string_view::npos;
         at = line.find(piece, at + 1)) {
        if (!isWordAt(at)) continue;
        if (place) return std::nullopt;
        place = at;
    }
    return place;
}

constexpr int kSize = 14;
/// Nobody reads more, and finding a mark's line takes longer the more marks there are.
constexpr std::size_t kMostMessages = 500;
const QColor kErrorColour(200, 0, 0);
const QColor kWarningColour(180, 110, 0);
const QColor kAdviceColour(90, 110, 140);
const QColor kHereColour(0, 90, 200);
const QColor kLitColour(255, 180, 0);
const QColor kFaultColour(230, 0, 0);
const QColor kBreakpointColour(200, 30, 40);
const QColor kLampColour(150, 110, 0);
const QColor kLampLight(255, 215, 60);
// How much of their colours lines have that are lit, in hundredths.
constexpr int kLitShare = 38;
constexpr int kLitShareOfDarkPage = 22;  // words in colours are to be read on it
constexpr int kSoftShare = 13;
constexpr int kFaultShare = 28;

QImage EmptyPicture(qreal density) {
    QImage picture(QSize(kSize, kSize) * density, QImage::Format_ARGB32);
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::transparent);
    return picture;
}

QImage ErrorPicture(qreal density, const QColor& colour, const QColor& page) {
    QImage picture = EmptyPicture(density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(1, 1, 12, 12));
    painter.setPen(QPen(page, 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(4.7, 4.7), QPointF(9.3, 9.3));
    painter.drawLine(QPointF(9.3, 4.7), QPointF(4.7, 9.3));
    return picture;
}

QImage WarningPicture(qreal density, const QColor& colour, const QColor& page) {
    QImage picture = EmptyPicture(density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({QPointF(7, 1.8), QPointF(12.8, 12), QPointF(1.2, 12)}));
    painter.setPen(QPen(page, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(7, 5.2), QPointF(7, 8.2));
    painter.drawPoint(QPointF(7, 10.6));
    return picture;
}

/// An i in a ring.
QImage AdvicePicture(qreal density, const QColor& colour) {
    QImage picture = EmptyPicture(density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.2));
    painter.drawEllipse(QRectF(1.5, 1.5, 11, 11));
    painter.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(7, 6.6), QPointF(7, 9.8));
    painter.drawPoint(QPointF(7, 4.2));
    return picture;
}

/// A bulb with its socket.
QImage LampPicture(qreal density, const QColor& colour) {
    QImage picture = EmptyPicture(density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.3, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(kLampLight);
    painter.drawEllipse(QRectF(3, 1, 8, 8));
    painter.drawLine(QPointF(5.2, 10.8), QPointF(8.8, 10.8));
    painter.drawLine(QPointF(6, 12.8), QPointF(8, 12.8));
    return picture;
}

QPolygonF Arrow() {
    return {{QPointF(1, 5), QPointF(7, 5), QPointF(7, 1.5), QPointF(13, 7), QPointF(7, 12.5),
             QPointF(7, 9), QPointF(1, 9)}};
}

QImage HerePicture(qreal density, const QColor& colour, bool isFilled) {
    QImage picture = EmptyPicture(density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (isFilled) painter.setBrush(colour);
    painter.drawPolygon(Arrow());
    return picture;
}

int MarginsWidth(const QsciScintilla& editor) {
    int width = 0;
    for (int margin = 0; margin < editor.margins(); ++margin)
        width += editor.marginWidth(margin);
    return width;
}

/// The text broken between its words, so that no row is wider than the room.
QString InRows(const QString& text, const QFontMetrics& font, int room) {
    QStringList rows;
    for (const QString& paragraph : text.split('\n')) {
        QString row;
        for (const QString& word : paragraph.split(' ')) {
            const QString longer = row.isEmpty() ? word : row + ' ' + word;
            if (row.isEmpty() || font.horizontalAdvance(longer) <= room) {
                row = longer;
            } else {
                rows += row;
                row = word;
            }
        }
        rows += row;
    }
    return rows.join('\n');
}

QImage BreakpointPicture(qreal density, const QColor& colour, const QColor& page,
                         BreakpointMark::Look look) {
    QImage picture = EmptyPicture(density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.6));
    if (look != BreakpointMark::Look::Hollow) painter.setBrush(colour);
    painter.drawEllipse(QRectF(2.5, 2.5, 9, 9));
    if (look != BreakpointMark::Look::Conditional) return picture;
    painter.setPen(QPen(page, 1.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(5, 6), QPointF(9, 6));
    painter.drawLine(QPointF(5, 8.6), QPointF(9, 8.6));
    return picture;
}

int MarkerOf(BreakpointMark::Look look) {
    switch (look) {
        case BreakpointMark::Look::Full: return kFullBreakpoint;
        case BreakpointMark::Look::Conditional: return kConditionalBreakpoint;
        case BreakpointMark::Look::Hollow: return kHollowBreakpoint;
    }
    return kFullBreakpoint;
}

}  // namespace

void EditorMarks::Redraw(const QColor& page) {
    page_ = page;
    const qreal density = editor_.devicePixelRatioF();
    const auto readable = [&](const QColor& colour) { return ReadableOn(colour, page); };
    Send(editor_, Sci::SCI_RGBAIMAGESETSCALE, std::lround(density * 100));
    editor_.markerDefine(ErrorPicture(density, readable(kErrorColour), page), kErrorMark);
    editor_.markerDefine(WarningPicture(density, readable(kWarningColour), page), kWarningMark);
    editor_.markerDefine(HerePicture(density, readable(kHereColour), true), kHereMark);
    editor_.markerDefine(HerePicture(density, readable(kHereColour), false), kSoftMark);
    const auto lightUp = [&](int marker, const QColor& colour, int share) {
        editor_.markerDefine(QsciScintilla::Background, marker);
        editor_.setMarkerBackgroundColor(Mix(colour, page, share), marker);
    };
    const bool isDark = page.lightness() < QColor(Qt::gray).lightness();
    lightUp(kHereLine, kLitColour, isDark ? kLitShareOfDarkPage : kLitShare);
    lightUp(kSoftLine, kLitColour, kSoftShare);
    lightUp(kFaultLine, kFaultColour, kFaultShare);
    using Look = BreakpointMark::Look;
    for (const Look look : {Look::Full, Look::Conditional, Look::Hollow})
        editor_.markerDefine(BreakpointPicture(density, readable(kBreakpointColour), page, look),
                             MarkerOf(look));
    editor_.markerDefine(AdvicePicture(density, readable(kAdviceColour)), kAdviceMark);
    editor_.markerDefine(LampPicture(density, readable(kLampColour)), kLampMark);
    editor_.setMarginMarkerMask(kLampMargin, 1 << kLampMark);
    editor_.setMarginMarkerMask(kBreakpointMargin, kBreakpointMarks);
    editor_.setMarginMarkerMask(kMargin, 1 << kAdviceMark | 1 << kWarningMark | 1 << kErrorMark |
                                             1 << kHereMark | 1 << kSoftMark);

    editor_.indicatorDefine(QsciScintilla::SquiggleIndicator, kErrorLine);
    editor_.setIndicatorForegroundColor(readable(kErrorColour), kErrorLine);
    editor_.indicatorDefine(QsciScintilla::DashesIndicator, kWarningLine);
    editor_.setIndicatorForegroundColor(readable(kWarningColour), kWarningLine);
    editor_.indicatorDefine(QsciScintilla::DotsIndicator, kAdviceLine);
    editor_.setIndicatorForegroundColor(readable(kAdviceColour), kAdviceLine);
}

EditorMarks::Mark EditorMarks::SetMark(int line, int marker, const QString& text) {
    return {editor_.markerAdd(line, marker), text};
}

/// What the message is about, where that stands in the line only once; else the whole line.
void EditorMarks::Underline(int line, const LineMessage& message) {
    const std::string text = LineText(editor_, line);
    std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    if (begin == text.size()) return;
    std::size_t length = text.size() - begin;
    if (const auto place = OnlyPlaceOf(text, message.subject.toStdString())) {
        begin = *place;
        length = message.subject.toStdString().size();
    }
    Send(editor_, Sci::SCI_SETINDICATORCURRENT, LookOf(message.severity).indicator);
    Send(editor_, Sci::SCI_INDICATORFILLRANGE, LineBegin(editor_, line) + static_cast<long>(begin),
         static_cast<long>(length));
}

void EditorMarks::ShowMessages(const std::vector<LineMessage>& messages) {
    ClearMessages();
    const std::size_t count = std::min(messages.size(), kMostMessages);
    for (const LineMessage& message : std::span(messages).first(count)) {
        const int line = std::clamp(message.line, 1, LineCount(editor_)) - 1;
        const SeverityLook& look = LookOf(message.severity);
        messages_.push_back(SetMark(line, look.marker, look.kind + message.text));
        Underline(line, message);
        AddLamp(message, line);
    }
}

/// One for a line, behind all that its messages say.
void EditorMarks::AddLamp(const LineMessage& message, int line) {
    if (!message.fix || HasLamp(line)) return;
    lamps_.push_back(SetMark(
        line, kLampMark,
        QCoreApplication::translate(
            "EditorMarks", "Alt+Enter, or a click on the lamp beside the line, fixes it.")));
}

bool EditorMarks::HasLamp(int line) const {
    return std::ranges::any_of(
        lamps_, [&](const Mark& lamp) { return editor_.markerLine(lamp.handle) == line; });
}

bool EditorMarks::HasMessage(int line) const {
    constexpr unsigned kMessages = 1U << kAdviceMark | 1U << kWarningMark | 1U << kErrorMark;
    return (editor_.markersAtLine(line) & kMessages) != 0;
}

void EditorMarks::ShowBelow(int line, const QString& text) {
    editor_.clearAnnotations();
    if (text.isEmpty()) return;
    const QColor colour = ReadableOn(kErrorColour, page_);
    const int room = editor_.viewport()->width() - MarginsWidth(editor_) - kSize;
    const QString rows = InRows(text, QFontMetrics(editor_.font()), room);
    editor_.annotate(line, rows, QsciStyle(-1, "Message", colour, page_, editor_.font()));
}

void EditorMarks::ClearMessages() {
    editor_.clearAnnotations();
    editor_.setScrollWidth(1);  // it grows again to what the text needs
    messages_.clear();
    lamps_.clear();
    editor_.markerDeleteAll(kLampMark);
    for (const SeverityLook& look : kSeverityLooks) {
        editor_.markerDeleteAll(look.marker);
        Send(editor_, Sci::SCI_SETINDICATORCURRENT, look.indicator);
        Send(editor_, Sci::SCI_INDICATORCLEARRANGE, 0, TextLength(editor_));
    }
}

void EditorMarks::MarkLine(int line, const QString& text, LineMark::Kind kind) {
    ClearMark();
    const bool isSoft = kind == LineMark::Kind::Soft;
    here_ = SetMark(line, isSoft ? kSoftMark : kHereMark, text);
    editor_.markerAdd(line, isSoft                          ? kSoftLine
                            : kind == LineMark::Kind::Fault ? kFaultLine
                                                            : kHereLine);
}

void EditorMarks::ClearMark() {
    here_.reset();
    for (const int marker : {kHereMark, kHereLine, kSoftMark, kSoftLine, kFaultLine})
        editor_.markerDeleteAll(marker);
}

void EditorMarks::ShowBreakpoints(const std::vector<BreakpointMark>& breakpoints) {
    breakpoints_.clear();
    for (const int marker : {kFullBreakpoint, kConditionalBreakpoint, kHollowBreakpoint})
        editor_.markerDeleteAll(marker);
    for (const BreakpointMark& mark : breakpoints) {
        const int line = std::clamp(mark.line, 1, LineCount(editor_)) - 1;
        breakpoints_.push_back(SetMark(line, MarkerOf(mark.look), mark.text));
    }
}

QString EditorMarks::TextAt(int line) const {
    if (editor_.markersAtLine(line) == 0) return {};
    QStringList texts;
    const auto add = [&](const Mark& mark) {
        if (editor_.markerLine(mark.handle) == line && !texts.contains(mark.text))
            texts += mark.text;
    };
    if (here_) add(*here_);
    for (const Mark& mark : breakpoints_)
        add(mark);
    for (const Mark& mark : messages_)
        add(mark);
    for (const Mark& mark : lamps_)
        add(mark);
    return texts.join('\n');
}

}  // namespace zentro
