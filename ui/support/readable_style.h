#pragma once

#include <QProxyStyle>

namespace zentro {

/// The desktop's style, with what it leaves unreadable on a dark desktop made readable: the title
/// bars of child windows that are not active, hints in empty text boxes, and which buttons are
/// pressed.
class ReadableStyle : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

}  // namespace zentro
