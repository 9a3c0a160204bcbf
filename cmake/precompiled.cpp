// Has nothing of its own: its target translates the headers that others share.
