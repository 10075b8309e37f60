set pagination off
set confirm off
target remote :PORT
break main
continue
next
next
print total
print/x $sp
break square
continue
print value
print $pc
info registers r24
delete
watch count
continue
print count
delete
continue
