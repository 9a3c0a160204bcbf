Numbers = {3, 1, 4, 1, 5, 9, 2, 6, 5, 3, 5, 8, 9, 7, 9, 3}
Place = 0
Value = 0
Left = 0
Sum = 0
Round = 0
Pass = 0

while Pass < 50 do
    Round = 0
    while Round < 30000 do
        Place = 1
        Left = 16
        while Left > 0 do
            Value = Numbers[Place]
            Sum = (Sum + Value) % 256
            Numbers[Place] = Sum
            Place = Place + 1
            Left = Left - 1
        end
        Round = Round + 1
    end
    Pass = Pass + 1
end

print("Sum", Sum)
print("Numbers", table.concat(Numbers, " "))
