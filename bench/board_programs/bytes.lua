Sum = 0
Inner = 0
Middle = 0
Outer = 0

repeat
    Middle = 0
    repeat
        Inner = 0
        repeat
            Sum = Sum + Inner
            Inner = Inner + 1
        until Inner == 250
        Middle = Middle + 1
    until Middle == 250
    Outer = Outer + 1
until Outer == 250

print("Sum", Sum % 256)
