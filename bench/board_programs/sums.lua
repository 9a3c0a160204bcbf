Result = 0
Pass = 0

function SumUpTo(Number)
    local Rest
    if Number == 0 then
        return 0
    end
    Rest = Number - 1
    Rest = SumUpTo(Rest)
    Rest = Rest + Number
    return Rest
end

repeat
    Result = SumUpTo(100)
    Pass = Pass + 1
until Pass == 30000

print("Result", Result)
