        .ORG $20
        .DW 1,2,3
        .ORG 0
        RET
