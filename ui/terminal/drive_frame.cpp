#include "ui/terminal/drive_frame.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>

#include "ui/support/spoken_label.h"

namespace zentro {

namespace {

constexpr int kSliderRows = 3;

}  // namespace

DriveFrame::DriveFrame(const DriveFrameNames& names, QWidget* parent)
    : QGroupBox(names.caption, parent), options_(new QButtonGroup(this)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(2);
    AddOption(names, names.forward, "FWD", "forward", DriveOption::Forward);
    AddOption(names, names.back, "BCK", "back", DriveOption::Back);
    AddOption(names, names.rest, names.restCaption, names.restSpoken, DriveOption::Rest);
    AddSlider(names);
    connect(options_, &QButtonGroup::idClicked, this,
            [this](int id) { emit OptionChosen(static_cast<DriveOption>(id)); });
    Show({});
}

void DriveFrame::AddOption(const DriveFrameNames& names, const char* name, const char* caption,
                           const char* spoken, DriveOption option) {
    auto* button = new QRadioButton(caption, this);
    button->setObjectName(name);
    button->setAccessibleName(QString("%1 %2").arg(names.caption, spoken));
    auto* grid = static_cast<QGridLayout*>(layout());
    grid->addWidget(button, static_cast<int>(options_->buttons().size()), 0);
    options_->addButton(button, static_cast<int>(option));
}

void DriveFrame::AddSlider(const DriveFrameNames& names) {
    slider_ = new QSlider(Qt::Vertical, this);
    slider_->setObjectName(names.slider);
    slider_->setAccessibleName(
        QString("%1 %2").arg(names.caption, QString(names.measure).toLower()));
    slider_->setRange(0, names.maximum);
    slider_->setPageStep(10);
    slider_->setMinimumHeight(fontMetrics().height() * kSliderRows);
    value_ = new QLabel(this);
    value_->setObjectName(names.label);
    value_->setAlignment(Qt::AlignCenter);
    value_->setMinimumWidth(fontMetrics().horizontalAdvance("100"));
    auto* measure = new QLabel(names.measure, this);
    measure->setBuddy(slider_);
    auto* grid = static_cast<QGridLayout*>(layout());
    grid->addWidget(slider_, 0, 1, kSliderRows, 1, Qt::AlignHCenter);
    grid->addWidget(measure, kSliderRows, 0);
    grid->addWidget(value_, kSliderRows, 1);
    connect(slider_, &QSlider::valueChanged, this, &DriveFrame::ValueChanged);
    connect(slider_, &QSlider::sliderMoved, this, &DriveFrame::ShowValue);
    connect(slider_, &QSlider::sliderPressed, this, &DriveFrame::DragBegun);
}

void DriveFrame::Show(const DriveControl& control) {
    options_->button(static_cast<int>(control.option))->setChecked(true);
    // The tab key comes to the chosen one, the arrow keys to the others.
    for (QAbstractButton* option : options_->buttons())
        option->setFocusPolicy(option->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    const QSignalBlocker blocker(slider_);
    slider_->setValue(control.value);
    ShowValue(control.value);
}

void DriveFrame::ShowValue(int value) {
    value_->setNum(value);
    SayWithCaption(*value_, slider_->accessibleName());
}

void DriveFrame::SetFollowing(bool following) {
    slider_->setTracking(following);
}

}  // namespace zentro
