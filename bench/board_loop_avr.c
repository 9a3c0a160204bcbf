/* The loop of board_loop.object for an AVR, with its variables in memory as well. */
#include <avr/interrupt.h>
#include <avr/sleep.h>
#include <stdint.h>

static volatile uint16_t sum, i, one = 1, limit = 60000, outer, passes = 200;

int main(void) {
    do {
        do {
            sum = sum + i;
            i = i + one;
        } while (i < limit);
        outer = outer + one;
        i = 0;
    } while (outer < passes);
    cli(); /* asleep without interrupts: the simulator ends */
    sleep_mode();
    return 0;
}
