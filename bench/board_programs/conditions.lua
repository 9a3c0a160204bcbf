Number = 0
Rest = 0
ByThree = 0
ByFive = 0
ByBoth = 0
ByNone = 0
Pass = 0

while Pass < 300 do
    Number = 0
    ByThree = 0
    ByFive = 0
    ByBoth = 0
    ByNone = 0
    while Number < 30000 do
        Rest = Number % 3
        if Rest == 0 then
            Rest = Number % 5
            if Rest == 0 then
                ByBoth = ByBoth + 1
            else
                ByThree = ByThree + 1
            end
        else
            Rest = Number % 5
            if Rest == 0 then
                ByFive = ByFive + 1
            else
                ByNone = ByNone + 1
            end
        end
        Number = Number + 1
    end
    Pass = Pass + 1
end

print("ByThree", ByThree)
print("ByFive", ByFive)
print("ByBoth", ByBoth)
print("ByNone", ByNone)
