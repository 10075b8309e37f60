/* The smallest complete program: avr-libc start-up code, USART set-up by the chip's
 * own register names, one line of text. CHIP is the -mmcu name, given by build.sh. */
#include "print.h"

int main(void) {
    uart_init();
    PUTS("hello from " CHIP "\n");
    finish();
    return 0;
}
