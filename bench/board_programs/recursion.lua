Result = 0
Pass = 0

function Fibonacci(Number)
    local Before = 0
    local First = 0
    local Second = 0
    if Number < 2 then
        return 1
    end
    Before = Number - 1
    First = Fibonacci(Before)
    Before = Number - 2
    Second = Fibonacci(Before)
    First = First + Second
    return First
end

repeat
    Result = Fibonacci(22)
    Pass = Pass + 1
until Pass == 100

print("Result", Result)
