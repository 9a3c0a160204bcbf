-- The loop of board_loop.object with global variables, as a program for pupils would have them.
sum = 0
i = 0
one = 1
limit = 60000
outer = 0
passes = 2000
repeat
    repeat
        sum = sum + i
        i = i + one
    until i >= limit
    outer = outer + one
    i = 0
until outer >= passes
print(sum % 65536)
