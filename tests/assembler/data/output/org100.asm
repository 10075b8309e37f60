        .ORG $100
MAIN:   RJMP MAIN
