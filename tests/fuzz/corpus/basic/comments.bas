' Only comments
' and nothing else
