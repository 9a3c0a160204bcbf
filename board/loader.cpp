#include "board/loader.h"

#include "board/board.h"

namespace zentro {

namespace {

constexpr unsigned kTooLarge = 256;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsLineEnd(char character) {
    return character == '\r' || character == '\n';
}

void MarkBadLine(Loader& loader) {
    if (loader.badLine == 0) loader.badLine = loader.line;
}

void StoreNumber(Board& board) {
    Loader& loader = board.serial.loader;
    if (!loader.inNumber) return;
    loader.inNumber = false;
    if (loader.number >= kTooLarge) {
        MarkBadLine(loader);
    } else if (loader.size == kMemorySize) {
        loader.tooLong = true;
    } else {
        board.memory.StoreByte(loader.size++, loader.number);
    }
    loader.number = 0;
}

void TakeDigit(Loader& loader, char digit) {
    loader.inNumber = true;
    const unsigned number = loader.number * 10 + static_cast<unsigned>(digit - '0');
    loader.number = number < kTooLarge ? number : kTooLarge;
}

/// One character of object code: digits, commas, blanks and line ends.
void TakeCharacter(Board& board, char character) {
    Loader& loader = board.serial.loader;
    if (IsDigit(character)) {
        TakeDigit(loader, character);
    } else {
        StoreNumber(board);
        // CR, LF and CR LF each end one line.
        if (character == '\r' || (character == '\n' && !loader.atLineStart)) ++loader.line;
        if (!IsLineEnd(character) && character != ',' && character != ' ' && character != '\t')
            MarkBadLine(loader);
    }
    loader.atLineStart = IsLineEnd(character);
}

/// A program finds the board as if it were the first one, but for the EEPROM and the clock.
void ForgetFormerPrograms(Board& board) {
    board.memory.Clear();
    board.random = kFirstRandom;
    board.devices.stickRest = {};
}

/// What is wrong with what was loaded. Only a good program is left to run.
std::string FinishLoading(Board& board) {
    StoreNumber(board);
    const Loader loader = board.serial.loader;
    board.serial.loader = {};
    if (loader.badLine != 0)
        return "line " + std::to_string(loader.badLine) +
               " is not made of numbers from 0 to 255 with commas between";
    if (loader.tooLong)
        return "the program is longer than " + std::to_string(kMemorySize) + " bytes";
    board.processor.programSize = loader.size;
    return {};
}

}  // namespace

void StartLoader(Board& board) {
    board.serial.line.clear();
    board.serial.loader = {};
    board.serial.loader.active = true;
    board.processor.programSize = 0;
    ForgetFormerPrograms(board);
}

void LoadCharacter(Board& board, char character) {
    const bool startsAgain = character == 'L' || character == 'l';
    if (startsAgain && board.serial.loader.atLineStart) {
        StartLoader(board);
        return;
    }
    if (character != ']') {
        TakeCharacter(board, character);
        return;
    }
    const std::string wrong = FinishLoading(board);
    PrintLine(board, "");
    if (wrong.empty()) {
        PrintLine(board, "Loaded " + std::to_string(board.processor.programSize) + " bytes");
    } else {
        PrintLine(board, "Not loaded: " + wrong);
    }
}

std::string LoadObjectText(Board& board, std::string_view text) {
    EndProgram(board, EndReason::Stopped);
    StartLoader(board);
    for (char character : text) {
        TakeCharacter(board, character);
    }
    return FinishLoading(board);
}

}  // namespace zentro
