# sources of constants/
