#pragma once

class QFileDialog;

namespace zentro {

class Disk;

/// Qt's own file dialog asks the disk at each key for the path that is typed into it, and the
/// window would hang with a network that is gone. So what would name such a path is not taken, and
/// the dialog says why. A desktop's own dialog is left as it is. The disk outlives the dialog.
void TakeOnlyPathsThatAnswer(QFileDialog& dialog, Disk& disk);

}  // namespace zentro
