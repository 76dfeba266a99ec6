%
O0001 (TEST X5 L3)
(open G1 X1
; G1 X2
G1 X1 (a) Y1 ; b
/G1X5
N5/G1
%
