State = 0
Steps = 0
Coins = 0
Pass = 0

function AddCoin()
    Coins = Coins + 1
end

while Pass < 500 do
    Steps = 0
    Coins = 0
    while Steps < 30000 do
        if State == 0 then
            State = 1
        elseif State == 1 then
            AddCoin()
            State = 2
        elseif State == 2 then
            State = 3
        else
            AddCoin()
            State = 0
        end
        Steps = Steps + 1
    end
    Pass = Pass + 1
end

print("Coins", Coins)
print("State", State)
