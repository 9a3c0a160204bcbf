Year = 0
Rest = 0
Leap = 0
Common = 0
Pass = 0

while Pass < 300 do
    Year = 0
    Leap = 0
    Common = 0
    while Year < 30000 do
        Year = Year + 1
        Rest = Year % 4
        if Rest == 0 then
            Rest = Year % 100
            if Rest == 0 then
                Rest = Year % 400
                if Rest == 0 then
                    Leap = Leap + 1
                else
                    Common = Common + 1
                end
            else
                Leap = Leap + 1
            end
        else
            Common = Common + 1
        end
    end
    Pass = Pass + 1
end

print("Leap", Leap)
print("Common", Common)
