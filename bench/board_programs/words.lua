Sum = 0
Number = 0
Pass = 0

while Pass < 2000 do
    Number = 0
    while Number < 30000 do
        Sum = Sum + Number
        Number = Number + 1
    end
    Pass = Pass + 1
end

print("Sum", Sum % 65536)
