# sources of config/
