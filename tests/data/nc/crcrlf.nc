G0 X1 ; räpid
g1	y.5	l1
G40 M6
