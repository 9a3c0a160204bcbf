#include "ui/terminal/download_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <cmath>

namespace zentro {

namespace {

constexpr int kSteps = 1000;  // finer than a bar has pixels on most screens

}  // namespace

DownloadBar::DownloadBar(QWidget* parent)
    : QWidget(parent), lines_(new QLabel(this)), bar_(new QProgressBar(this)) {
    setObjectName("downloadBar");
    lines_->setObjectName("downloadLines");
    bar_->setObjectName("downloadProgress");
    bar_->setAccessibleName(tr("Download"));
    bar_->setRange(0, kSteps);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName("BtnCancelDownload");
    cancel->setAccessibleName(tr("Cancel the download"));
    cancel->setAutoDefault(false);
    setFocusProxy(cancel);
    cancel->setCursor(Qt::ArrowCursor);  // it works while the window waits
    connect(cancel, &QPushButton::clicked, this, &DownloadBar::CancelClicked);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(lines_);
    row->addWidget(bar_, 1);
    row->addWidget(cancel);
    ShowProgress(0, 0);
    hide();
}

void DownloadBar::ShowProgress(double fraction, int linesSent) {
    lines_->setText(linesSent == 1 ? tr("Downloading: 1 line sent")
                                   : tr("Downloading: %1 lines sent").arg(linesSent));
    bar_->setValue(static_cast<int>(std::lround(fraction * kSteps)));
}

}  // namespace zentro
