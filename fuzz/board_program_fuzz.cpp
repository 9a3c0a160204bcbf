// Any bytes as a program. It is run in two slicings, whose boards must stay the same, and traced.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "board/board.h"
#include "board/trace.h"

namespace {

constexpr std::uint64_t kStepsPerTick = 300;
constexpr std::size_t kHeader = 2;

void Load(zentro::Board& board, const std::uint8_t* data, std::size_t size) {
    board = {};
    for (std::size_t at = 0; at < size && at < zentro::kMemorySize; ++at) {
        board.memory.StoreByte(static_cast<std::uint32_t>(at), data[at]);
        board.processor.programSize = static_cast<std::uint32_t>(at + 1);
    }
    zentro::StartProgram(board);
}

void SetSomeInputs(zentro::Board& board, unsigned seed) {
    zentro::Inputs inputs = board.inputs;
    const auto tick = static_cast<unsigned>(board.clock);
    inputs.digital[seed % 4] = (tick & 1) != 0;
    inputs.buttons[seed % 6] = (tick & 2) != 0;
    inputs.analog[tick % 6] = static_cast<std::uint8_t>(seed * tick);
    inputs.pulses[tick % 4] = static_cast<std::uint16_t>(inputs.pulses[tick % 4] + seed % 5);
    zentro::SetInputs(board, inputs);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static zentro::Board whole;  // too large for every stack; made new by Load
    static zentro::Board sliced;
    if (size <= kHeader) return 0;
    const unsigned ticks = data[0] % 32;
    Load(whole, data + kHeader, size - kHeader);
    Load(sliced, data + kHeader, size - kHeader);
    for (unsigned tick = 0; tick < ticks; ++tick) {
        const std::uint64_t done = zentro::RunInstructions(whole, kStepsPerTick);
        if (done > kStepsPerTick) std::abort();
        for (std::uint64_t step = 0; step < done; ++step) {
            if (!zentro::StepWithTrace(sliced)) std::abort();
        }
        if (done < kStepsPerTick && zentro::StepWithTrace(sliced)) std::abort();
        zentro::AdvanceTick(whole);
        zentro::AdvanceTick(sliced);
        SetSomeInputs(whole, data[1]);
        SetSomeInputs(sliced, data[1]);
        if (!(whole == sliced)) std::abort();
        zentro::TakeOutput(whole);
        zentro::TakeOutput(sliced);
    }
    return 0;
}
