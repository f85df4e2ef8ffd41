"""What the end-to-end tests and the demonstration are made of: the program under Wine, the driver that
works its windows, and the emulated game network it talks to."""
