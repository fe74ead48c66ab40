# sources of display/
