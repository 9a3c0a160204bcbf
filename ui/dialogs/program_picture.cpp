#include "ui/dialogs/program_picture.h"

#include <QPainter>

#include "ui/support/icons.h"

namespace zentro {

void ProgramPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    ProgramIcon().paint(&painter, rect());
}

}  // namespace zentro
