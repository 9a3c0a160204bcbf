"""The form in which every measurement tells what bench/run gathers: fields between tabs."""

MARK = "result"


def report(what, ours, peer, figure, wanted):
    """One figure and what is wanted of it, "<= 1" say, or nothing; `ours` and `peer` are the two
    values behind a ratio, with their units."""
    print(MARK, what, ours, peer, f"{figure:.2f}", wanted, sep="\t", flush=True)
