// Measures the source editor beside the editing component's own lexer for Lua, on the same text in
// one run: how long a file takes to stand there wholly coloured, and how long a key press takes
// until it is painted. bench/editor builds and runs it.

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <Qsci/qscilexerlua.h>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <limits>
#include <vector>

#include "desktop/live_check.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"

namespace {

using zentro::Send;
using zentro::SourceEditor;
using Sci = QsciScintillaBase;

constexpr int kRounds = 15;

/// What the work used of the processor, which others on the machine disturb least.
double MillisecondsOf(const std::function<void()>& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) * 1e3 / CLOCKS_PER_SEC;
}

/// Paints what has changed.
void Paint() {
    QApplication::processEvents();
}

/// The component with a lexer of its own, set up as the source editor is.
struct PeerEditor : QsciScintilla {
    PeerEditor() {
        setUtf8(true);
        setLexer(new QsciLexerLua(this));
        setFolding(QsciScintilla::BoxedFoldStyle);
        setMarginLineNumbers(0, true);
        setMarginWidth(0, "88888");
        setScrollWidthTracking(true);
    }
};

struct KeyTimes {
    double median = 0;
    double worst = 0;
};

/// Types in the middle of the text, as a user does: words, blocks that move every fold below them,
/// quotes and line ends.
KeyTimes TypeInto(QsciScintilla& editor) {
    editor.setCursorPosition(editor.lines() / 2, 0);
    editor.ensureCursorVisible();
    Paint();
    QTest::qWait(300);
    std::vector<double> times;
    for (const char c : QByteArray("loop\nspeed = \"abc\" + 1\nif speed < 20 then\n"
                                   "wait 100 ; rest\nend if\nend loop\n")) {
        times.push_back(MillisecondsOf([&] {
            if (c == '\n') {
                QTest::keyClick(&editor, Qt::Key_Return);
            } else {
                QTest::keyClick(&editor, c);
            }
            Paint();
        }));
    }
    std::ranges::sort(times);
    return {times[times.size() / 2], times.back()};
}

QByteArray ReadAll(const char* path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) qFatal("cannot read %s", path);
    return file.readAll();
}

void CheckColoured(QsciScintilla& editor, const char* name) {
    for (const long part : {0L, 1L, 2L}) {
        // "DEFINE" begins the text; somewhere in each third there is a style other than plain.
        const long begin = zentro::TextLength(editor) * part / 3;
        long styled = begin;
        while (styled < begin + 2000 && Send(editor, Sci::SCI_GETSTYLEAT, styled) == 0)
            ++styled;
        if (styled == begin + 2000) qFatal("%s: not coloured at %ld", name, begin);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc != 3) qFatal("usage: editor_speed CONFIGURATION PROGRAM");
    zentro::InstructionConfiguration configuration;
    const std::string problem = zentro::LoadInstructionConfig(argv[1], configuration);
    if (!problem.empty()) qFatal("%s", problem.c_str());
    const QByteArray text = ReadAll(argv[2]);
    const std::string bytes = text.toStdString();
    const QString string = QString::fromUtf8(text);

    SourceEditor ours(configuration, nullptr);
    PeerEditor peer;
    for (QsciScintilla* editor :
         {static_cast<QsciScintilla*>(&ours), static_cast<QsciScintilla*>(&peer)}) {
        editor->resize(900, 700);
        editor->show();
        Paint();
    }

    double open = std::numeric_limits<double>::max();
    double openPeer = open;
    double openFolded = open;
    for (int round = 0; round < kRounds; ++round) {
        double loaded = MillisecondsOf([&] {
            ours.LoadText(bytes, true);
            Paint();
        });
        open = std::min(open, loaded);
        loaded += MillisecondsOf([&] { ours.Folds().Finish(); });
        openFolded = std::min(openFolded, loaded);
        openPeer = std::min(openPeer, MillisecondsOf([&] {
                                peer.setText(string);
                                Send(peer, Sci::SCI_COLOURISE, 0, -1);
                                Paint();
                            }));
    }
    CheckColoured(ours, "source editor");
    CheckColoured(peer, "Lua lexer");

    const KeyTimes keys = TypeInto(ours);
    const KeyTimes keysPeer = TypeInto(peer);
    double check = std::numeric_limits<double>::max();
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    const zentro::SettingsStore settings(path, path, [](const std::string&) {});
    zentro::Disk disk;
    zentro::Programs programs(disk);
    const zentro::FileId file = programs.Add({}, "program.txt", [&] { return QString(string); });
    for (int round = 0; round < kRounds; ++round) {
        check = std::min(check, MillisecondsOf([&] {
                             zentro::CheckProgram(configuration, *programs.File(file), settings,
                                                  programs);
                         }));
    }
    std::printf("%d lines, best of %d        ours ms   Lua ms   ratio\n", ours.lines(), kRounds);
    std::printf("opened and coloured      %10.2f %8.2f %7.2f\n", open, openPeer, open / openPeer);
    std::printf("with all folds           %10.2f %8.2f %7.2f\n", openFolded, openPeer,
                openFolded / openPeer);
    std::printf("key press, median        %10.2f %8.2f %7.2f\n", keys.median, keysPeer.median,
                keys.median / keysPeer.median);
    std::printf("key press, worst         %10.2f %8.2f %7.2f   (wanted: below 5 ms)\n", keys.worst,
                keysPeer.worst, keys.worst / keysPeer.worst);
    std::printf("check while typing       %10.2f\n", check);
    std::printf("result\teditor, opening %d lines, Lua lexer\t%.1f ms\t%.1f ms\t%.2f\t<= 1\n",
                ours.lines(), open, openPeer, open / openPeer);
    std::printf("result\teditor, the same with all folds\t%.1f ms\t%.1f ms\t%.2f\t<= 1\n",
                openFolded, openPeer, openFolded / openPeer);
    std::printf("result\teditor, slowest key press in ms\t\t\t%.2f\t<= 5\n", keys.worst);
}
