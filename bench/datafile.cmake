# Record formatting
